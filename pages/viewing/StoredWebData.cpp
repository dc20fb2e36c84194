#include "pages/viewing/StoredWebData.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QString markFile(const QString& folder)
{
    return QDir(folder).filePath(u"clear-web-data"_s);
}

/// Makes the folder, and those above it that are missing, for this user alone, as the engine
/// would.
bool makePrivateFolder(const QString& folder)
{
    return QFileInfo::exists(folder) ||
           (makePrivateFolder(QFileInfo(folder).absolutePath()) &&
            QDir().mkdir(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
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

void keepIconsOffDisk(const QString& folder)
{
    const QString icons = QDir(folder).filePath(u"Favicons"_s);
    QFile::remove(icons);
    QFile::remove(icons + u"-journal"_s);
    // The engine has no setting for it, but goes on without its file where it finds a folder in
    // the file's place (seen with Qt 6.4).
    makePrivateFolder(icons);
}
