#include "LoopbackServer.h"

#include <QSslSocket>

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

void LoopbackServer::incomingConnection(qintptr descriptor)
{
    if (m_certificate.isEmpty()) {
        QTcpServer::incomingConnection(descriptor);
        return;
    }
    auto* const socket = new QSslSocket(this);
    socket->setSocketDescriptor(descriptor);
    socket->setLocalCertificate(m_certificate);
    socket->setPrivateKey(m_certificate, QSsl::Ec);
    socket->startServerEncryption();
    addPendingConnection(socket);
}

void LoopbackServer::goOn()
{
    for (const auto& [socket, rest] : std::exchange(m_rests, {})) {
        if (socket) {
            socket->write(rest);
            socket->disconnectFromHost();
        }
    }
}

void LoopbackServer::breakOff()
{
    for (const auto& [socket, rest] : std::exchange(m_rests, {}))
        if (socket)
            socket->disconnectFromHost();
}

QString LoopbackServer::address(const QString& path, const QString& host) const
{
    return (m_certificate.isEmpty() ? u"http"_s : u"https"_s) +
           u"://%1:%2%3"_s.arg(host).arg(serverPort()).arg(path);
}

void LoopbackServer::serve(QTcpSocket& socket)
{
    if (!socket.peek(65536).contains("\r\n\r\n"))
        return; // the request's head is not whole yet
    const QByteArray request = socket.readAll();
    const QList<QByteArray> words = request.split(' ');
    const QString path = QString::fromLatin1(words.value(1)).section(u'?', 0, 0);
    ++m_requests[path];
    m_last[path] = request;
    emit requested(path);
    const Answer answer = m_answers.value(path, {.body = "nicht da", .status = 404});
    if (answer.logIn.isEmpty() || request.contains("Basic " + answer.logIn.toBase64() + "\r\n")) {
        send(socket, answer, request);
    } else {
        send(socket,
             {.body = "<title>Gesperrt</title>",
              .status = 401,
              .headers = "WWW-Authenticate: Basic realm=\"Keller\"\r\n"},
             request);
    }
}

/// The first byte that the request asks for, of a file that is still the same; else 0.
static qsizetype firstWanted(const LoopbackServer::Answer& answer, const QByteArray& request)
{
    static const QByteArray range = "\r\nRange: bytes=";
    const qsizetype at = request.indexOf(range);
    const bool isSame = !answer.etag.isEmpty() && request.contains("If-Range: " + answer.etag);
    return at < 0 || !isSame ? 0 : request.mid(at + range.size()).split('-').first().toLongLong();
}

void LoopbackServer::send(QTcpSocket& socket, const Answer& answer, const QByteArray& request)
{
    const qsizetype first = firstWanted(answer, request);
    const qsizetype last = answer.sent < 0 ? answer.body.size() : answer.sent;
    const QByteArray size = QByteArray::number(answer.body.size());
    QByteArray head = answer.headers;
    if (!answer.etag.isEmpty())
        head += "Accept-Ranges: bytes\r\nETag: " + answer.etag + "\r\n";
    if (first > 0)
        head += "Content-Range: bytes " + QByteArray::number(first) + "-" +
                QByteArray::number(answer.body.size() - 1) + "/" + size + "\r\n";
    socket.write("HTTP/1.1 " + QByteArray::number(first > 0 ? 206 : answer.status) + " Answer\r\n" +
                 head + "Content-Type: " + answer.type + "\r\nContent-Length: " +
                 QByteArray::number(answer.body.size() - first) + "\r\nConnection: close\r\n\r\n" +
                 answer.body.mid(first, std::max<qsizetype>(last - first, 0)));
    if (answer.waits)
        m_rests.append({&socket, answer.body.mid(std::max(first, last))});
    if (answer.sent < 0 || answer.closes)
        socket.disconnectFromHost();
}
