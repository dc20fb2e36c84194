#pragma once

#include "pages/asking/PageLimits.h"
#include "pages/asking/PermissionMemory.h"
#include "pages/asking/PromptTurns.h"

#include <QSet>

/// What the pages of one profile share when they ask the user, for one run of the program: what
/// he has said, and how much they may still do unasked. Whose turn it is they share with all
/// others. It outlives every page of the profile.
class PromptSession {
public:
    /// `turns` outlives the session.
    explicit PromptSession(PromptTurns& turns) : m_turns(turns) {}
    Q_DISABLE_COPY_MOVE(PromptSession)

    void askInTurn(QObject* owner, const std::function<void()>& ask)
    {
        m_turns.askInTurn(owner, ask);
    }
    class Hold : public PromptTurns::Hold {
    public:
        explicit Hold(PromptSession& session) : PromptTurns::Hold(session.m_turns) {}
    };

    /// Forgets what the user has said about pages so far.
    void forgetAnswers();

    PermissionMemory permissions;
    /// Certificates that the user trusts though the engine does not, each for
    /// one host and port.
    QSet<QByteArray> trustedCertificates;
    /// Schemes that go to the desktop without another question.
    QSet<QString> desktopSchemes;
    PopupLimit popups;
    PrintLimit prints;

private:
    PromptTurns& m_turns;
};
