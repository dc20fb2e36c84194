#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

class FileError;

/// Whole files that survive a kill or a full disk: each is replaced in one step,
/// and what could not be replaced waits beside it under its name and ".bak".

/// Replaces the file by `bytes`: they are written beside it, synced, and renamed
/// over it; a ".bak" is then removed. When that fails the old content becomes
/// the ".bak", no file of the name remains, and FileError is thrown.
void replaceFile(const QString& path, const QByteArray& bytes);

/// Replaces the file by `bytes` in one step, too, but leaves the old one as it is when that
/// fails. Throws FileError.
void renewFile(const QString& path, const QByteArray& bytes);

/// Replaces many files, each as `replaceFile` does and in the order in which they come, but
/// much sooner: a disk that gets several files at once writes them together. A file is in its
/// place after `finish` at the latest; those that wait when the object goes are dropped.
class FileReplacer {
public:
    /// Told instead of a throw, maybe only by a later call.
    using Failed = std::function<void(const FileError& error)>;

    FileReplacer();
    FileReplacer(const FileReplacer&) = delete;
    FileReplacer& operator=(const FileReplacer&) = delete;
    ~FileReplacer();

    void replace(const QString& path, const QByteArray& bytes, const Failed& failed);
    void finish();

private:
    struct Begun;

    static void syncAll(const std::vector<Begun>& begun);
    static void replaceAlone(const Begun& begun);

    std::vector<Begun> m_begun;
    qsizetype m_bytes = 0; ///< of the files begun
};

/// Removes the file and its ".bak". Throws FileError when the file is still there.
void removeFile(const QString& path);

/// The first `limit` bytes of a file. A missing file is first taken back from its ".bak"; if
/// there is none it is created empty. Where nothing may be written it is only read, and one that
/// is missing counts as empty. Throws FileError.
QByteArray readOrCreateFile(const QString& path, qint64 limit);

/// Renames the ".bak" to `path` if there is no file of that name.
void takeBackupBack(const QString& path);

/// Writes `bytes` to whatever `path` names: through links, into devices, and into files that
/// have several names. Throws FileError; a file that was there has its old content then, and
/// none is left where there was none.
void writeFile(const QString& path, const QByteArray& bytes);

/// Removes the files that the functions above have begun in `folder` and never put in their
/// place, as the program was killed. Files of any other name stay, and those that are being
/// written.
void removeAbandonedFiles(const QString& folder);
