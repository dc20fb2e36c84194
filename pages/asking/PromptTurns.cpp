#include "pages/asking/PromptTurns.h"

#include <QTimer>

void PromptTurns::askInTurn(QObject* owner, const std::function<void()>& ask)
{
    m_waiting.push_back({owner, ask});
    askNextLater();
}

PromptTurns::Hold::~Hold()
{
    --m_turns.m_holds;
    m_turns.askNextLater();
}

void PromptTurns::askNextLater()
{
    QTimer::singleShot(0, this, &PromptTurns::askNext);
}

void PromptTurns::askNext()
{
    if (m_holds > 0 || m_waiting.empty())
        return; // the end of the question that is open calls this again
    const Waiting first = m_waiting.front();
    m_waiting.pop_front();
    const Hold hold(*this);
    if (first.owner)
        first.ask();
}
