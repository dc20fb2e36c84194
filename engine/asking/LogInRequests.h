#pragma once

#include "pages/asking/PageAsker.h"

#include <QElapsedTimer>
#include <QObject>
#include <QUrl>

class AskingPage;
class QAuthenticator;

/// Asks for user name and password when a server or a proxy wants them. Who
/// cancels sees the server's own page about it, and is left alone by what else the page
/// wants to load.
class LogInRequests : public QObject {
    Q_OBJECT
public:
    explicit LogInRequests(AskingPage& asking, QObject* parent);

private:
    /// What the user has answered last, on the way to the page that is shown.
    struct Answered {
        QUrl url;
        QString site;
        QString realm;
        QString user;
    };

    std::optional<LogIn> ask(const QUrl& url, LogInQuestion question);
    void serverAsks(const QUrl& url, QAuthenticator& answer);
    void proxyAsks(const QUrl& url, const QString& proxy, QAuthenticator& answer);

    AskingPage& m_asking;
    Answered m_last;
    bool m_isRefused = false;
    QElapsedTimer m_sinceRefusal;
};
