#include "base/SafeFile.h"

#include "base/Errors.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
QString backupOf(const QString& path)
{
    return path + QStringLiteral(".bak");
}

/// Renames the old file to its ".bak", so that no file of the name is there and its content
/// is not lost. Folders and devices of that name are left alone.
void setAside(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return;
    QFile::remove(backupOf(path));
    QFile::rename(path, backupOf(path));
}

/// Where `path` leads in the end when it is a symbolic link, whether or not a file is there.
QString linkTarget(QString path)
{
    constexpr int linksAtMost = 40; // as many as Linux follows
    for (int i = 0; i < linksAtMost && QFileInfo(path).isSymLink(); ++i)
        path = QFileInfo(path).symLinkTarget();
    return path;
}

/// How many names the file has in its file system.
nlink_t namesOf(const QString& path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_nlink : 1;
}

/// Writes all of `bytes` to the disk. Returns why that failed, else an empty text.
QString written(QFile& file, const QByteArray& bytes)
{
    if (file.write(bytes) != bytes.size())
        return file.errorString();
    // A pipe or a device cannot be synced.
    if (::fsync(file.handle()) != 0 && errno != EINVAL)
        return qt_error_string(errno);
    return {};
}

/// Writes a new file beside the old one and then renames it over that. It is locked until it
/// is renamed, so that `removeAbandonedFiles` leaves it alone.
void putNewInPlace(const QString& path, const QByteArray& bytes)
{
    const QString target = linkTarget(path);
    const QFileInfo old(target);
    if (old.exists() && !old.isWritable())
        throw FileError(path, qt_error_string(EACCES));
    const auto number = QRandomGenerator::global()->generate();
    QFile file(old.path() + u"/tessera-%1.neu"_s.arg(number, 8, 16, QChar(u'0')));
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        throw FileError(path, file.errorString());
    ::flock(file.handle(), LOCK_EX | LOCK_NB);
    if (old.exists())
        file.setPermissions(old.permissions());
    QString reason = written(file, bytes);
    if (reason.isEmpty() && std::rename(QFile::encodeName(file.fileName()).constData(),
                                        QFile::encodeName(target).constData()) != 0)
        reason = qt_error_string(errno);
    if (reason.isEmpty())
        return;
    file.remove();
    throw FileError(path, reason);
}

/// Writes into a device or a pipe.
void writeInto(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw FileError(path, file.errorString());
    if (const QString reason = written(file, bytes); !reason.isEmpty())
        throw FileError(path, reason);
}

/// Writes over the content of a file that is there; when that fails the old content comes
/// back.
void writeOver(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered))
        throw FileError(path, file.errorString());
    const QByteArray old = file.readAll();
    file.seek(0);
    if (const QString reason = written(file, bytes); !reason.isEmpty()) {
        file.seek(0);
        file.write(old);
        file.resize(old.size());
        throw FileError(path, reason);
    }
    file.resize(bytes.size());
}
} // namespace

void replaceFile(const QString& path, const QByteArray& bytes)
{
    try {
        putNewInPlace(path, bytes);
    } catch (const FileError&) {
        setAside(path);
        throw;
    }
    QFile::remove(backupOf(path));
}

void removeFile(const QString& path)
{
    QFile::remove(backupOf(path));
    QFile file(path);
    if (!file.remove() && QFileInfo::exists(path))
        throw FileError(path, file.errorString());
}

QByteArray readOrCreateFile(const QString& path, qint64 limit)
{
    constexpr auto mode = QIODevice::ReadWrite | QIODevice::Unbuffered;
    QFile file(path);
    if (!file.open(mode | QIODevice::ExistingOnly)) {
        takeBackupBack(path);
        if (!file.open(mode))
            throw FileError(path, file.errorString());
    }
    if (file.isSequential()) // a pipe or a device would never end
        throw FileError(path, QStringLiteral("Es ist keine gewöhnliche Datei."));
    QByteArray bytes(std::min(limit, file.size()), Qt::Uninitialized);
    const qint64 count = file.read(bytes.data(), bytes.size());
    if (count < 0)
        throw FileError(path, file.errorString());
    bytes.truncate(count);
    return bytes;
}

void takeBackupBack(const QString& path)
{
    if (QFileInfo(backupOf(path)).isFile() && !QFileInfo::exists(path))
        QFile::rename(backupOf(path), path);
}

void writeFile(const QString& path, const QByteArray& bytes)
{
    const QFileInfo old(path);
    if (old.exists() && !old.isFile()) {
        writeInto(path, bytes);
        return;
    }
    try {
        // Its other names are to show the new content too.
        if (old.exists() && namesOf(path) > 1)
            writeOver(path, bytes);
        else
            putNewInPlace(path, bytes);
    } catch (const FileError&) {
        // In a folder where nothing can be made, a file may be writable all the same.
        if (!old.isFile() || !old.isWritable())
            throw;
        writeOver(path, bytes);
    }
}

void removeAbandonedFiles(const QString& folder)
{
    static const QRegularExpression ours(u"\\A(tessera-[0-9a-f]{8}\\.neu|"
                                         // Earlier versions put six random letters behind the
                                         // name. A suffix in one case, or with a capital only
                                         // in front, may be a user's own and stays.
                                         "([0-9]+|Book)\\.bkm\\.(?=[a-z]*[A-Z])"
                                         "(?=[A-Z]*[a-z])(?![A-Z][a-z]*\\z)[a-zA-Z]{6})\\z"_s);
    const QStringList names = QDir(folder).entryList(QDir::Files | QDir::NoSymLinks);
    for (const QString& name : names) {
        QFile file(folder + u'/' + name);
        if (ours.match(name).hasMatch() && file.open(QIODevice::ReadOnly) &&
            ::flock(file.handle(), LOCK_EX | LOCK_NB) == 0)
            file.remove();
    }
}
