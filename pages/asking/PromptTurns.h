#pragma once

#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>

/// Whose turn it is to ask the user: one question at a time, whichever page has it. It outlives
/// every page.
class PromptTurns : public QObject {
    Q_OBJECT
public:
    /// Runs `ask` from the event loop, when it is its turn and nobody else asks; never
    /// when `owner` is gone by then. `ask` returns when the question has been answered.
    void askInTurn(QObject* owner, const std::function<void()>& ask);

    /// While one lives, somebody asks the user, and those who wait for their turn wait on.
    class Hold {
    public:
        explicit Hold(PromptTurns& turns) : m_turns(turns) { ++m_turns.m_holds; }
        ~Hold();
        Q_DISABLE_COPY_MOVE(Hold)

    private:
        PromptTurns& m_turns;
    };

    /// Whether somebody asks the user.
    bool isHeld() const { return m_holds > 0; }

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
