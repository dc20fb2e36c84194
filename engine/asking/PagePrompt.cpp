#include "engine/asking/PagePrompt.h"

PagePrompt::PagePrompt(PromptSession& session, Shell& shell, QWidget* window, WebEnginePage& page)
    : m_session(session), m_shell(shell), m_window(window), m_page(page)
{
}

PagePrompt::Open::Open(PagePrompt& prompt)
    : m_keeper(prompt.m_page, WebEnginePage::Keeper::While::Asking), m_hold(prompt.m_session),
      m_noDrops(prompt.m_shell)
{
}

Prompt::Answer PagePrompt::ask(const Prompt::Question& question)
{
    if (!canAsk())
        return {};
    const Open open(*this);
    return m_shell.prompt().ask(m_window, question);
}

std::optional<Prompt::LogIn> PagePrompt::askLogIn(const Prompt::LogInQuestion& question)
{
    if (!canAsk())
        return {};
    const Open open(*this);
    return m_shell.prompt().askLogIn(m_window, question);
}
