#pragma once

#include <QObject>
#include <QUrl>

class PagePrompt;
class QWebEngineCertificateError;
struct FrameReport;

/// Asks whether a page may be opened though its server cannot prove who it is.
/// Only a page itself is asked about; what it takes from such servers is refused.
class CertificateErrors : public QObject {
    Q_OBJECT
public:
    CertificateErrors(PagePrompt& prompt, QObject* parent);

private:
    void occurred(QWebEngineCertificateError error);
    void ask(QWebEngineCertificateError error);
    bool isTrusted(const QWebEngineCertificateError& error) const;
    bool isOfPage(const QUrl& url) const;
    /// Has the engine's error page say why it stands in the place of the page refused.
    void explain(const FrameReport& report);
    /// Asks about a server that nothing is loaded from since its exception was taken back.
    void askAnew();

    PagePrompt& m_prompt;
    /// Where the page is going or has gone.
    QUrl m_target;
    /// Why the user has refused to open it; empty if he has not.
    QString m_refused;
};
