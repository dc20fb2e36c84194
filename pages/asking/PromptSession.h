#pragma once

#include "pages/asking/PageLimits.h"
#include "pages/asking/PermissionMemory.h"

#include <QObject>
#include <QPointer>
#include <QSet>

#include <deque>
#include <functional>

/// What all pages share when they ask the user, for one run of the program: whose turn it
/// is, what he has said, and how much they may still do unasked. It outlives every page.
class PromptSession : public QObject {
    Q_OBJECT
public:
    /// Runs `ask` from the event loop, when it is its turn and nobody else asks; never
    /// when `owner` is gone by then. `ask` returns when the question has been answered.
    void askInTurn(QObject* owner, const std::function<void()>& ask);

    /// While one lives, somebody asks the user, and those who wait for their turn wait on.
    class Hold {
    public:
        explicit Hold(PromptSession& session) : m_session(session) { ++m_session.m_holds; }
        ~Hold();
        Q_DISABLE_COPY_MOVE(Hold)

    private:
        PromptSession& m_session;
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
    struct Waiting {
        QPointer<QObject> owner;
        std::function<void()> ask;
    };

    void askNextLater();
    void askNext();

    std::deque<Waiting> m_waiting;
    int m_holds = 0;
};
