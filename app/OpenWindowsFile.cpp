#include "app/OpenWindowsFile.h"

#include "base/Errors.h"
#include "base/SafeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {
/// Of a file of 32,767 windows with long addresses and titles.
constexpr qint64 longestFile = 256LL * 1024 * 1024;
} // namespace

OpenWindowsFile::OpenWindowsFile(const QString& path,
                                 std::function<void(const QString& reason)> failed)
    : m_path(path), m_failed(std::move(failed))
{
    m_writer.setMaxThreadCount(1);
}

OpenWindowsFile::~OpenWindowsFile()
{
    m_writer.waitForDone();
}

std::optional<OpenWindows> OpenWindowsFile::left() const
{
    QFile file(m_path);
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    ignoringErrors([&] { removeAbandonedFiles(QFileInfo(m_path).path()); });
    return openWindowsFromBytes(file.read(longestFile));
}

void OpenWindowsFile::keep(const OpenWindows& open)
{
    QByteArray bytes = openWindowsToBytes(open);
    if (bytes == m_kept)
        return;
    m_kept = bytes;
    m_writer.start([this, bytes] { write(bytes); });
}

void OpenWindowsFile::write(const QByteArray& bytes) const
{
    runReporting(
        [&] {
            QDir().mkpath(QFileInfo(m_path).path());
            // A new content gets the rights of the old one before the first byte is written.
            QFile empty(m_path);
            if (empty.open(QIODevice::WriteOnly | QIODevice::NewOnly,
                           QFile::ReadOwner | QFile::WriteOwner))
                empty.close();
            renewFile(m_path, bytes); // on a full disk the windows of before are better than none
        },
        m_failed);
}

void OpenWindowsFile::remove()
{
    m_kept.clear();
    m_writer.waitForDone();
    ignoringErrors([this] { removeFile(m_path); });
}
