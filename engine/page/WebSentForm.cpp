#include "engine/page/WebSentForm.h"

#include <QDataStream>
#include <QIODevice>
#include <QUrl>

namespace {

/// The version of the stored form that is read here (Qt 6.4 to 6.8).
constexpr int knownVersion = 4;

bool hasSentForm(QDataStream& entry)
{
    QUrl url;
    QString title;
    QByteArray state;
    qint32 transition = 0;
    bool isSent = false;
    entry >> url >> title >> state >> transition >> isSent;
    QUrl referrer;
    qint32 referrerPolicy = 0;
    QUrl firstAddress;
    bool hasOwnAgent = false;
    qint64 time = 0;
    int status = 0;
    QUrl icon;
    entry >> referrer >> referrerPolicy >> firstAddress >> hasOwnAgent >> time >> status >> icon;
    return isSent;
}

} // namespace

// The engine tells it by the stored form of its history only (Qt 6.4): that a navigation
// was a form is told as well, but not whether it sent something or just asked, nor what
// came of it after redirects and changes of the address by the page's scripts.
bool isFromSentForm(const QWebEngineHistory& history)
{
    QByteArray stored;
    QDataStream writer(&stored, QIODevice::WriteOnly);
    writer << history;
    QDataStream reader(stored);
    int version = 0;
    int count = 0;
    int current = 0;
    reader >> version >> count >> current;
    bool isSent = false;
    for (int i = 0; version == knownVersion && i <= current; ++i)
        isSent = hasSentForm(reader);
    return isSent && reader.status() == QDataStream::Ok;
}
