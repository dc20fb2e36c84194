#pragma once

#include <QObject>

class AskingPage;
class QAuthenticator;
class QUrl;

/// Asks for user name and password when a server or a proxy wants them. Who
/// cancels sees the server's own page about it.
class LogInRequests : public QObject {
    Q_OBJECT
public:
    explicit LogInRequests(AskingPage& asking, QObject* parent);

private:
    void serverAsks(const QUrl& url, QAuthenticator& answer);
    void proxyAsks(const QString& proxy, QAuthenticator& answer);

    AskingPage& m_asking;
};
