#include "engine/asking/CertificateGuard.h"

#include "pages/asking/PromptSession.h"

#include <QWebEngineProfile>

using namespace Qt::StringLiterals;

CertificateGuard::CertificateGuard(QWebEngineProfile& profile, PromptSession& session,
                                   QObject* parent)
    : QWebEngineUrlRequestInterceptor(parent), m_profile(profile), m_session(session)
{
    // Requests of all pages take the way over it, so it stands there only while it is needed.
    connect(&session, &PromptSession::answersChanged, this, [this] {
        m_profile.setUrlRequestInterceptor(m_session.certificates.hasTakenBack() ? this : nullptr);
    });
}

CertificateGuard::~CertificateGuard()
{
    m_profile.setUrlRequestInterceptor(nullptr);
}

void CertificateGuard::interceptRequest(QWebEngineUrlRequestInfo& request)
{
    const QUrl url = request.requestUrl();
    const bool isEncrypted = url.scheme() == "https"_L1 || url.scheme() == "wss"_L1;
    request.block(isEncrypted && m_session.certificates.takenBack(url.host()).has_value());
}
