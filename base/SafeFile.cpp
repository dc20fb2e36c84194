#include "base/SafeFile.h"

#include "base/Errors.h"
#include "base/NewFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <atomic>
#include <memory>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <utility>

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

/// Whether nothing is there, and nothing can be made.
bool isMissingForGood(const QString& path)
{
    const QFileInfo file(path);
    return !file.exists() && !QFileInfo::exists(backupOf(path)) && QFileInfo(file.path()).isDir() &&
           !QFileInfo(file.path()).isWritable();
}

/// Opens what there is where nothing may be written: the file, or else its ".bak".
bool openForReading(QFile& file)
{
    const QString path = file.fileName();
    for (const QString& name : {path, backupOf(path)}) {
        file.setFileName(name);
        if (QFileInfo(name).isFile() && file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            return true;
    }
    return false;
}

/// How many names the file has in its file system.
nlink_t namesOf(const QString& path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? info.st_nlink : 1;
}

/// Writes into a device or a pipe.
void writeInto(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        throw FileError(path, file.errorString());
    if (const QString reason = writtenAndSynced(file, bytes); !reason.isEmpty())
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
    if (const QString reason = writtenAndSynced(file, bytes); !reason.isEmpty()) {
        file.seek(0);
        file.write(old);
        file.resize(old.size());
        throw FileError(path, reason);
    }
    file.resize(bytes.size());
}
} // namespace

void renewFile(const QString& path, const QByteArray& bytes)
{
    NewFile file(path, bytes);
    file.sync();
    file.putInPlace();
}

void replaceFile(const QString& path, const QByteArray& bytes)
{
    try {
        renewFile(path, bytes);
    } catch (const FileError&) {
        setAside(path);
        throw;
    }
    QFile::remove(backupOf(path));
}

struct FileReplacer::Begun {
    QString path;
    QByteArray bytes;
    Failed failed;
    std::unique_ptr<NewFile> file;
};

FileReplacer::FileReplacer() = default;
FileReplacer::~FileReplacer() = default;

void FileReplacer::replace(const QString& path, const QByteArray& bytes, const Failed& failed)
{
    constexpr std::size_t filesAtOnce = 128;
    constexpr qsizetype bytesAtOnce = 16'000'000;
    if (m_begun.size() == filesAtOnce || m_bytes > bytesAtOnce)
        finish();
    Begun begun{path, bytes, failed, nullptr};
    try {
        begun.file = std::make_unique<NewFile>(path, bytes);
        begun.file->startSync();
        m_begun.push_back(std::move(begun));
        m_bytes += bytes.size();
    } catch (const FileError&) {
        finish();
        replaceAlone(begun);
    }
}

void FileReplacer::finish()
{
    m_bytes = 0;
    std::vector<Begun> begun = std::exchange(m_begun, {});
    syncAll(begun);
    for (Begun& one : begun) {
        try {
            one.file->putInPlace();
            QFile::remove(backupOf(one.path));
            one.failed = nullptr;
        } catch (const FileError&) {
            one.file.reset();
        }
    }
    for (const Begun& one : begun)
        if (one.failed)
            replaceAlone(one);
}

// In several threads, so that the file system has more than one file to end at a time.
void FileReplacer::syncAll(const std::vector<Begun>& begun)
{
    constexpr std::size_t threadsAtMost = 8;
    std::atomic<std::size_t> next = 0;
    const auto work = [&begun, &next] {
        for (std::size_t i = next++; i < begun.size(); i = next++)
            begun[i].file->sync();
    };
    std::vector<std::jthread> others;
    try {
        while (others.size() + 1 < std::min(threadsAtMost, begun.size()))
            others.emplace_back(work);
    } catch (const std::system_error&) {
        // There are no more threads: those that are there do it all.
    }
    work();
}

// Several files begun take room on the disk and descriptors: what failed among them may
// succeed alone.
void FileReplacer::replaceAlone(const Begun& begun)
{
    try {
        replaceFile(begun.path, begun.bytes);
    } catch (const FileError& error) {
        begun.failed(error);
    }
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
        if (!file.open(mode)) {
            const QString reason = file.errorString();
            if (isMissingForGood(path))
                return {};
            if (!openForReading(file))
                throw FileError(path, reason);
        }
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
            renewFile(path, bytes);
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
