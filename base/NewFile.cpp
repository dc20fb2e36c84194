#include "base/NewFile.h"

#include "base/Errors.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
/// Where `path` leads in the end when it is a symbolic link, whether or not a file is there.
QString linkTarget(QString path)
{
    constexpr int linksAtMost = 40; // as many as Linux follows
    for (int i = 0; i < linksAtMost && QFileInfo(path).isSymLink(); ++i)
        path = QFileInfo(path).symLinkTarget();
    return path;
}

QString written(QFile& file, const QByteArray& bytes)
{
    return file.write(bytes) == bytes.size() ? QString() : file.errorString();
}

QString synced(QFile& file)
{
    // A pipe or a device cannot be synced.
    return ::fsync(file.handle()) == 0 || errno == EINVAL ? QString() : qt_error_string(errno);
}
} // namespace

QString writtenAndSynced(QFile& file, const QByteArray& bytes)
{
    const QString reason = written(file, bytes);
    return reason.isEmpty() ? synced(file) : reason;
}

NewFile::NewFile(const QString& path, const QByteArray& bytes)
    : m_path(path), m_target(linkTarget(path))
{
    const QFileInfo old(m_target);
    if (old.exists() && !old.isWritable())
        throw FileError(m_path, qt_error_string(EACCES));
    const auto number = QRandomGenerator::global()->generate();
    m_file.setFileName(old.path() + u"/tessera-%1.neu"_s.arg(number, 8, 16, QChar(u'0')));
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        throw FileError(m_path, m_file.errorString());
    ::flock(m_file.handle(), LOCK_EX | LOCK_NB);
    if (old.exists())
        m_file.setPermissions(old.permissions());
    if (const QString reason = written(m_file, bytes); !reason.isEmpty()) {
        m_file.remove();
        throw FileError(m_path, reason);
    }
}

NewFile::~NewFile()
{
    if (!m_isInPlace)
        m_file.remove();
}

void NewFile::startSync()
{
    // Only a hint: `sync` waits, and says what has failed.
    ::sync_file_range(m_file.handle(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

void NewFile::sync()
{
    m_failure = synced(m_file);
}

void NewFile::putInPlace()
{
    if (m_failure.isEmpty() && std::rename(QFile::encodeName(m_file.fileName()).constData(),
                                           QFile::encodeName(m_target).constData()) != 0)
        m_failure = qt_error_string(errno);
    if (!m_failure.isEmpty())
        throw FileError(m_path, m_failure);
    m_isInPlace = true;
}
