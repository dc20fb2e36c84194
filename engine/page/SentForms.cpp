#include "engine/page/SentForms.h"

void SentForms::interceptRequest(QWebEngineUrlRequestInfo& request)
{
    constexpr qsizetype most = 20;
    const bool isForFrame =
        request.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeMainFrame ||
        request.resourceType() == QWebEngineUrlRequestInfo::ResourceTypeSubFrame;
    if (!isForFrame)
        return;
    emit documentWanted();
    const QUrl address = request.requestUrl().adjusted(QUrl::RemoveFragment);
    m_sent.removeAll(address);
    if (request.requestMethod() == "GET")
        return;
    m_sent.append(address);
    if (m_sent.size() > most)
        m_sent.removeFirst();
}

bool SentForms::isFrom(const QUrl& address) const
{
    return m_sent.contains(address.adjusted(QUrl::RemoveFragment));
}
