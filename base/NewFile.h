#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

/// Writes all of `bytes` and waits until they are on the disk. Returns why that failed, else
/// an empty text.
QString writtenAndSynced(QFile& file, const QByteArray& bytes);

/// The next content of a file, written beside it until it takes its place. It goes again if
/// it never does. It is locked meanwhile, so that `removeAbandonedFiles` leaves it alone.
class NewFile {
public:
    /// Writes `bytes` beside `path`, or beside the file to which links lead from there. Throws
    /// FileError.
    NewFile(const QString& path, const QByteArray& bytes);
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;
    ~NewFile();

    /// Lets the disk begin to write, and waits for nothing.
    void startSync();
    /// Waits until everything is on the disk; a failure is thrown by `putInPlace`.
    void sync();
    /// Renames the file over the old one. Throws FileError; the old one stays then.
    void putInPlace();

private:
    QString m_path;
    QString m_target; ///< where `m_path` leads
    QFile m_file;
    QString m_failure; ///< why it could not be written or synced
    bool m_isInPlace = false;
};
