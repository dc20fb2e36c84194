#pragma once

#include "base/Prompt.h"

#include <QElapsedTimer>
#include <QObject>
#include <QUrl>

class PagePrompt;
class QAuthenticator;

/// Asks for user name and password when a server or a proxy wants them. Who cancels sees
/// the server's own page about it, and is not asked for anything else that this page loads.
class LogInRequests : public QObject {
    Q_OBJECT
public:
    LogInRequests(PagePrompt& prompt, QObject* parent);

private:
    /// What the user has answered last for the page that is loading or shown.
    struct Answered {
        QUrl url;
        QString site;
        QString realm;
        QString user;
    };

    std::optional<Prompt::LogIn> ask(const QUrl& url, Prompt::LogInQuestion question);
    void serverAsks(const QUrl& url, QAuthenticator& answer);
    void proxyAsks(const QUrl& url, const QString& proxy, QAuthenticator& answer);

    PagePrompt& m_prompt;
    Answered m_last;
    bool m_isRefused = false;
    /// Runs since the user has refused.
    QElapsedTimer m_sinceRefusal;
};
