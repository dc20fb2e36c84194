#pragma once

#include <QWebEngineUrlRequestInterceptor>

class PromptSession;
class QWebEngineProfile;

/// Lets nothing be loaded from a server for which the user has taken back his exception: the
/// engine itself goes on trusting a certificate that it was once told to accept (seen with
/// Qt 6.4), and asks nobody any more. `CertificateErrors` asks in its place.
class CertificateGuard : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT
public:
    /// Both outlive it.
    CertificateGuard(QWebEngineProfile& profile, PromptSession& session, QObject* parent);
    ~CertificateGuard() override;
    Q_DISABLE_COPY_MOVE(CertificateGuard)

    void interceptRequest(QWebEngineUrlRequestInfo& request) override;

private:
    QWebEngineProfile& m_profile;
    PromptSession& m_session;
};
