#pragma once

#include "pages/asking/CertificateExceptions.h"
#include "pages/asking/PageLimits.h"
#include "pages/asking/PermissionMemory.h"
#include "pages/asking/PromptTurns.h"

#include <QObject>
#include <QSet>

/// What the pages of one profile share when they ask the user, for one run of the program: what
/// he has said, and how much they may still do unasked. Whose turn it is they share with all
/// others. It outlives every page of the profile.
class PromptSession : public QObject {
    Q_OBJECT
public:
    /// `turns` outlives the session.
    explicit PromptSession(PromptTurns& turns) : m_turns(turns) {}

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
    /// Each takes back one thing that the user has said.
    void takeBackPermission(const QUrl& site, PermissionKind kind);
    void takeBackCertificate(const QString& host);
    void takeBackDesktopScheme(const QString& scheme);

    PermissionMemory permissions;
    CertificateExceptions certificates;
    /// Schemes that go to the desktop without another question.
    QSet<QString> desktopSchemes;
    PopupLimit popups;
    PrintLimit prints;

signals:
    /// The user has said something, or has taken it back. Who changes `permissions`,
    /// `certificates` or `desktopSchemes` sends it.
    void answersChanged();
    void permissionTakenBack(const QUrl& site, PermissionKind kind);

private:
    PromptTurns& m_turns;
};
