#pragma once

#include <QObject>
#include <QUrl>

class AskingPage;
class QWebEngineCertificateError;

/// Asks whether a page may be opened though its server cannot prove who it is.
/// Only a page itself is asked about; what it takes from such servers is refused.
class CertificateErrors : public QObject {
    Q_OBJECT
public:
    explicit CertificateErrors(AskingPage& asking, QObject* parent);

private:
    void met(QWebEngineCertificateError error);
    void ask(QWebEngineCertificateError error);
    bool isTrusted(const QWebEngineCertificateError& error) const;
    bool isOfPage(const QUrl& url) const;

    AskingPage& m_asking;
    /// Where the page is going or has gone.
    QUrl m_target;
};
