#pragma once

#include "browser/services/PageAsker.h"

#include <QElapsedTimer>
#include <QObject>

class AskingPage;
class QAuthenticator;
class QUrl;

/// Asks for user name and password when a server or a proxy wants them. Who
/// cancels sees the server's own page about it, and is left alone by what else the page
/// wants to load.
class LogInRequests : public QObject {
    Q_OBJECT
public:
    explicit LogInRequests(AskingPage& asking, QObject* parent);

private:
    std::optional<LogIn> ask(const LogInQuestion& question);
    void serverAsks(const QUrl& url, QAuthenticator& answer);
    void proxyAsks(const QString& proxy, QAuthenticator& answer);

    AskingPage& m_asking;
    bool m_isRefused = false;
    QElapsedTimer m_sinceRefusal;
};
