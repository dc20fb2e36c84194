#include "pages/viewing/StoredWebData.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace {

QString markFile(const QString& folder)
{
    return QDir(folder).filePath(u"clear-web-data"_s);
}

} // namespace

bool markStoredWebData(const QString& folder)
{
    return QDir().mkpath(folder) && QFile(markFile(folder)).open(QIODevice::WriteOnly);
}

void removeMarkedWebData(const QString& folder)
{
    if (!QFile::exists(markFile(folder)))
        return;
    bool isGone = true;
    for (const auto& name : {u"Local Storage"_s, u"Session Storage"_s, u"IndexedDB"_s,
                             u"databases"_s, u"File System"_s, u"Service Worker"_s, u"WebStorage"_s,
                             u"blob_storage"_s, u"shared_proto_db"_s}) {
        QDir data(QDir(folder).filePath(name));
        isGone = (!data.exists() || data.removeRecursively()) && isGone;
    }
    if (isGone) // otherwise the next start tries again
        QFile::remove(markFile(folder));
}
