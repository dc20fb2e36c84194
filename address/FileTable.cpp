#include "address/FileTable.h"

#include <QDir>
#include <QFileInfo>

namespace {
/// The toolkit warns about paths that no file system can hold.
bool canBePath(const QString& path)
{
    return path.startsWith(u'/') && !path.contains(QChar(0));
}
} // namespace

bool LinuxFileTable::exists(const QString& path) const
{
    if (!canBePath(path))
        return false;
    const QFileInfo info(path);
    return info.isSymLink() || info.exists();
}

bool LinuxFileTable::isFolder(const QString& path) const
{
    return canBePath(path) && QFileInfo(path).isDir();
}

QStringList LinuxFileTable::entries(const QString& folder) const
{
    if (!canBePath(folder))
        return {};
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
}
