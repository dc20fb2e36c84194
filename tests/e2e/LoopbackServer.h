#pragma once

#include <QHash>
#include <QPointer>
#include <QTcpServer>
#include <QUrl>

class QTcpSocket;

/// A small HTTP server on the loopback interface with scripted answers, one
/// per path. A path without an answer is answered with 404 and a short text.
class LoopbackServer : public QTcpServer {
    Q_OBJECT
public:
    struct Answer {
        QByteArray body = {};
        QByteArray type = "text/html; charset=utf-8";
        int status = 200;
        /// Further header lines, each ended by CR LF.
        QByteArray headers = {};
        /// The rest of the body is never sent: only its first `sent` bytes.
        qsizetype sent = -1;
        /// Or not before `goOn`.
        bool waits = false;
        /// With one, a part may be asked for, as long as it is part of the same file.
        QByteArray etag = {};
        /// The connection ends there, with or without the whole body.
        bool closes = false;
        /// "user:password" that the answer is kept for; others get 401 (realm "Keller").
        QByteArray logIn = {};
    };

    explicit LoopbackServer(QObject* parent = nullptr);

    /// From now on it speaks TLS, with the certificate and the key in this file.
    void useTls(const QString& certificate) { m_certificate = certificate; }
    /// Sends the rest of the answers that wait.
    void goOn();
    /// Ends their connections instead.
    void breakOff();

    void answer(const QString& path, const Answer& answer) { m_answers.insert(path, answer); }
    void page(const QString& path, const QByteArray& html) { answer(path, {.body = html}); }

    QString address(const QString& path, const QString& host = QStringLiteral("127.0.0.1")) const;
    int requests(const QString& path) const { return m_requests.value(path); }
    /// The head of the last request for `path`.
    QByteArray lastRequest(const QString& path) const { return m_last.value(path); }

signals:
    /// A request has come, and is about to be answered.
    void requested(const QString& path);

protected:
    void incomingConnection(qintptr descriptor) override;

private:
    void serve(QTcpSocket& socket);
    void send(QTcpSocket& socket, const Answer& answer, const QByteArray& request);

    QHash<QString, Answer> m_answers;
    QHash<QString, int> m_requests;
    QHash<QString, QByteArray> m_last;
    QList<std::pair<QPointer<QTcpSocket>, QByteArray>> m_rests;
    QString m_certificate;
};
