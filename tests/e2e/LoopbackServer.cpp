#include "LoopbackServer.h"

#include <QTcpSocket>

using namespace Qt::StringLiterals;

LoopbackServer::LoopbackServer(QObject* parent) : QTcpServer(parent)
{
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* const socket = nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(*socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

QString LoopbackServer::address(const QString& path, const QString& host) const
{
    return u"http://%1:%2%3"_s.arg(host).arg(serverPort()).arg(path);
}

void LoopbackServer::serve(QTcpSocket& socket)
{
    if (!socket.peek(65536).contains("\r\n\r\n")) {
        return; // the request's head is not whole yet
    }
    const QByteArray request = socket.readAll();
    const QList<QByteArray> words = request.split(' ');
    const QString path = QString::fromLatin1(words.value(1)).section(u'?', 0, 0);
    ++m_requests[path];
    emit requested(path);
    const Answer answer = m_answers.value(path, {.body = "nicht da", .status = 404});
    if (answer.logIn.isEmpty() || request.contains("Basic " + answer.logIn.toBase64() + "\r\n")) {
        send(socket, answer);
    } else {
        send(socket, {.body = "<title>Gesperrt</title>",
                      .status = 401,
                      .headers = "WWW-Authenticate: Basic realm=\"Keller\"\r\n"});
    }
}

void LoopbackServer::send(QTcpSocket& socket, const Answer& answer) const
{
    const QByteArray length =
        answer.isLengthUnknown
            ? QByteArray()
            : "Content-Length: " + QByteArray::number(answer.body.size()) + "\r\n";
    socket.write("HTTP/1.1 " + QByteArray::number(answer.status) + " Answer\r\n" + answer.headers +
                 "Content-Type: " + answer.type + "\r\n" + length + "Connection: close\r\n\r\n" +
                 answer.body.left(answer.sent < 0 ? answer.body.size() : answer.sent));
    if (answer.sent < 0 || answer.closes) {
        socket.disconnectFromHost();
    }
}
