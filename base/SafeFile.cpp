#include "base/SafeFile.h"

#include "base/Errors.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {
QString backupOf(const QString& path)
{
    return path + QStringLiteral(".bak");
}

/// The old content makes room under its name, but is not lost. Folders and
/// devices of that name are left alone.
void setAside(const QString& path)
{
    if (!QFileInfo(path).isFile())
        return;
    QFile::remove(backupOf(path));
    QFile::rename(path, backupOf(path));
}
} // namespace

void replaceFile(const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(bytes) != bytes.size() || !file.commit()) {
        const QString reason = file.errorString();
        file.cancelWriting();
        setAside(path);
        throw FileError(path, reason);
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
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        file.write(bytes) != bytes.size())
        throw FileError(path, file.errorString());
    file.close();
    if (file.error() != QFileDevice::NoError)
        throw FileError(path, file.errorString());
}
