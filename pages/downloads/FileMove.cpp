#include "pages/downloads/FileMove.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>

namespace {

FileMove resultOf(int error)
{
    switch (error) {
    case EEXIST:
        return FileMove::TargetExists;
    case EXDEV:
        return FileMove::OtherFileSystem;
    case ENOSPC:
    case EDQUOT:
        return FileMove::NoSpace;
    case EACCES:
    case EPERM:
    case EROFS:
        return FileMove::Denied;
    default:
        return FileMove::Failed;
    }
}

bool copyContent(QFile& source, QFile& target, const std::atomic_bool& isCancelled)
{
    constexpr qint64 piece = 1 << 20;
    while (!source.atEnd() && !isCancelled) {
        const QByteArray bytes = source.read(piece);
        if (bytes.isEmpty() || target.write(bytes) != bytes.size())
            return false;
    }
    return true;
}

} // namespace

FileMove renameFile(const QString& from, const QString& to, bool replaces)
{
    const QByteArray source = QFile::encodeName(from);
    const QByteArray target = QFile::encodeName(to);
    if (!replaces) {
        if (::renameat2(AT_FDCWD, source, AT_FDCWD, target, RENAME_NOREPLACE) == 0)
            return FileMove::Done;
        if (errno != EINVAL) // some file systems do not know the flag
            return resultOf(errno);
        if (QFile::exists(to))
            return FileMove::TargetExists;
    }
    return std::rename(source, target) == 0 ? FileMove::Done : resultOf(errno);
}

FileMove copyFile(const QString& from, const QString& to, const std::atomic_bool& isCancelled)
{
    QFile source(from);
    QFile target(to);
    if (!source.open(QIODevice::ReadOnly) ||
        !target.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        return resultOf(errno);
    target.setPermissions(source.permissions());
    const bool isCopied = copyContent(source, target, isCancelled);
    const int error = errno;
    target.close();
    if (isCopied && !isCancelled)
        return FileMove::Done;
    if (QFileInfo(to).isFile())
        target.remove();
    return isCancelled ? FileMove::Cancelled : resultOf(error);
}
