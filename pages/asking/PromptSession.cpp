#include "pages/asking/PromptSession.h"

#include <QTimer>

void QuestionQueue::add(QObject* owner, const std::function<void()>& ask)
{
    m_waiting.push_back({owner, ask});
    goOn();
}

QuestionQueue::Hold::~Hold()
{
    --m_queue.m_open;
    m_queue.goOn();
}

void QuestionQueue::goOn()
{
    QTimer::singleShot(0, this, &QuestionQueue::next);
}

void QuestionQueue::next()
{
    if (m_open > 0 || m_waiting.empty())
        return; // whoever asks now, goes on afterwards
    const Waiting first = m_waiting.front();
    m_waiting.pop_front();
    const Hold hold(*this);
    if (first.owner)
        first.ask();
}
