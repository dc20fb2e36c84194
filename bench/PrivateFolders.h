#pragma once

#include <QTemporaryDir>

/// A temporary folder that stands for the user's: what this process and those
/// that it starts keep, they keep in it, apart from a copy that is running.
/// Made before the application object, it goes after all that writes into it.
class PrivateFolders {
public:
    PrivateFolders();

    QString path(const QString& name) const { return m_folder.filePath(name); }
    /// Copies the program, which keeps its preferences beside itself, from the
    /// folder of this one. Returns its path; throws BenchError.
    QString copyProgram() const;

private:
    QTemporaryDir m_folder;
};
