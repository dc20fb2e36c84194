#pragma once

#include <QList>
#include <QUrl>
#include <QWebEngineUrlRequestInterceptor>

/// Remembers which addresses a page has gone to with a form that was sent, not only asked for:
/// the engine tells it of a request alone (seen with Qt 6.4), and neither of a navigation nor of
/// a download.
class SentForms : public QWebEngineUrlRequestInterceptor {
    Q_OBJECT
public:
    using QWebEngineUrlRequestInterceptor::QWebEngineUrlRequestInterceptor;

    void interceptRequest(QWebEngineUrlRequestInfo& request) override;
    /// Whether what was last got from there is the answer to a form.
    bool isFrom(const QUrl& address) const;

signals:
    /// The page is about to ask for a document, its own or that of a frame.
    void documentWanted();

private:
    QList<QUrl> m_sent;
};
