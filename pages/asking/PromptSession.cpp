#include "pages/asking/PromptSession.h"

#include <QTimer>

void PromptSession::askInTurn(QObject* owner, const std::function<void()>& ask)
{
    m_waiting.push_back({owner, ask});
    askNextLater();
}

PromptSession::Hold::~Hold()
{
    --m_session.m_holds;
    m_session.askNextLater();
}

void PromptSession::askNextLater()
{
    QTimer::singleShot(0, this, &PromptSession::askNext);
}

void PromptSession::askNext()
{
    if (m_holds > 0 || m_waiting.empty())
        return; // the end of the question that is open calls this again
    const Waiting first = m_waiting.front();
    m_waiting.pop_front();
    const Hold hold(*this);
    if (first.owner)
        first.ask();
}

void PromptSession::forgetAnswers()
{
    permissions.clear();
    trustedCertificates.clear();
    desktopSchemes.clear();
}
