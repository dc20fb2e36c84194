#pragma once

#include "base/RunCommand.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/PageAsker.h"
#include "pages/asking/QuestionDesk.h"

#include <QPointer>

#include <functional>

/// Puts the questions of one page to the user. The page lives on while one is
/// open; what asks must expect that its window is gone afterwards.
class AskingPage {
public:
    /// All but `window` outlive the page, and this object goes with it.
    AskingPage(QuestionDesk& desk, Shell& shell, QWidget* window, WebEnginePage& page);

    /// While one lives, the user is asked: the page lives on, the questions of others
    /// wait, and the frame takes no drops.
    class Open {
    public:
        explicit Open(AskingPage& asking);

    private:
        WebEnginePage::Question m_question;
        QuestionQueue::Hold m_hold;
        DropsDisabled m_noDrops;
    };

    WebEnginePage& page() const { return m_page; }
    QuestionDesk& desk() const { return m_desk; }

    /// Ask at once, from within the engine. Nothing is accepted when the page
    /// has lost its window.
    PageAnswer ask(const PageQuestion& question);
    std::optional<LogIn> logIn(const LogInQuestion& question);
    /// Runs `ask` when no other question is open; never when `owner` has gone.
    void whenItIsOurTurn(QObject* owner, const std::function<void()>& ask);

private:
    template <typename Ask>
    auto asking(const Ask& ask) -> decltype(ask(std::declval<PageAsker&>()));

    QuestionDesk& m_desk;
    Shell& m_shell;
    QPointer<QWidget> m_window;
    WebEnginePage& m_page;
};
