#pragma once

#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/PromptSession.h"

#include <QPointer>

/// Puts the questions of one page to the user. The page lives on while one is
/// open; what asks must expect that its window is gone afterwards.
class PagePrompt {
public:
    /// All but `window` outlive the page, and this object goes with it.
    PagePrompt(PromptSession& session, Shell& shell, QWidget* window, WebEnginePage& page);

    /// While one lives, the user is asked: the page lives on, the questions of others
    /// wait, and the frame takes no drops.
    class Open {
    public:
        explicit Open(PagePrompt& prompt);

    private:
        WebEnginePage::Keeper m_keeper;
        PromptSession::Hold m_hold;
        DropsDisabled m_noDrops;
    };

    WebEnginePage& page() const { return m_page; }
    PromptSession& session() const { return m_session; }

    /// Both ask at once, from within the engine; `PromptSession::askInTurn` is for what can
    /// wait. Nothing is accepted when the page has lost its window.
    Prompt::Answer ask(const Prompt::Question& question);
    std::optional<Prompt::LogIn> askLogIn(const Prompt::LogInQuestion& question);

private:
    bool canAsk() const { return m_window && !m_page.isRetired(); }

    PromptSession& m_session;
    Shell& m_shell;
    QPointer<QWidget> m_window;
    WebEnginePage& m_page;
};
