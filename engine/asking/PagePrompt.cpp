#include "engine/asking/PagePrompt.h"

AskingPage::AskingPage(QuestionDesk& desk, Shell& shell, QWidget* window, WebEnginePage& page)
    : m_desk(desk), m_shell(shell), m_window(window), m_page(page)
{
}

AskingPage::Open::Open(AskingPage& asking)
    : m_question(asking.m_page), m_hold(asking.m_desk.queue), m_noDrops(asking.m_shell)
{
}

template <typename Ask>
auto AskingPage::asking(const Ask& ask) -> decltype(ask(std::declval<PageAsker&>()))
{
    if (!m_window || m_page.isRetired())
        return {};
    const Open open(*this);
    return ask(*m_desk.asker);
}

PageAnswer AskingPage::ask(const PageQuestion& question)
{
    return asking([&](PageAsker& asker) { return asker.ask(m_window, question); });
}

std::optional<LogIn> AskingPage::logIn(const LogInQuestion& question)
{
    return asking([&](PageAsker& asker) { return asker.logIn(m_window, question); });
}

void AskingPage::whenItIsOurTurn(QObject* owner, const std::function<void()>& ask)
{
    m_desk.queue.add(owner, ask);
}
