#pragma once

#include "app/OpenWindows.h"

#include <QThreadPool>

#include <functional>

/// The file that says which browser windows are open. It is there while the program runs, and
/// gone after a proper end: one that a start finds was left by a run that was killed. Only its
/// owner may read it. It is written in a thread of its own, as a disk may take its time, and
/// replaced in one step, so that it is whole at any moment.
class OpenWindowsFile {
public:
    /// `failed` is told, in the thread of the file, why it could not be written.
    OpenWindowsFile(const QString& path, std::function<void(const QString& reason)> failed);
    /// Waits for what is being written.
    ~OpenWindowsFile();
    Q_DISABLE_COPY_MOVE(OpenWindowsFile)

    /// What the last run has left; nothing after a proper end, or if it cannot be read.
    std::optional<OpenWindows> left() const;
    /// Writes the file soon, unless it says the same already.
    void keep(const OpenWindows& open);
    /// Removes the file when what is being written is done.
    void remove();

private:
    void write(const QByteArray& bytes) const;

    QString m_path;
    std::function<void(const QString&)> m_failed;
    QByteArray m_kept;
    /// One thread, so that the last one written is the last one given.
    QThreadPool m_writer;
};
