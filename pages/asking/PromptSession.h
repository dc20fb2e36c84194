#pragma once

#include <QObject>
#include <QPointer>

#include <deque>
#include <functional>

/// The questions that can wait: one is put to the user at a time, when no other
/// window of a page's is open.
class QuestionQueue : public QObject {
    Q_OBJECT
public:
    /// Runs `ask` when it is its turn, from the event loop; never when `owner`
    /// is gone by then. `ask` returns when the question has been answered.
    void add(QObject* owner, const std::function<void()>& ask);

    /// While one lives, the queue waits: somebody else asks the user.
    class Hold {
    public:
        explicit Hold(QuestionQueue& queue) : m_queue(queue) { ++m_queue.m_open; }
        ~Hold();
        Q_DISABLE_COPY_MOVE(Hold)

    private:
        QuestionQueue& m_queue;
    };

private:
    struct Waiting {
        QPointer<QObject> owner;
        std::function<void()> ask;
    };

    void goOn();
    void next();

    std::deque<Waiting> m_waiting;
    int m_open = 0;
};
