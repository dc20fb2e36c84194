#pragma once

#include <QByteArray>
#include <QString>

/// Whole files that survive a kill or a full disk: each is replaced in one step,
/// and what could not be replaced waits beside it under its name and ".bak".

/// Replaces the file by `bytes`: they are written beside it, synced, and renamed
/// over it; a ".bak" is then removed. When that fails the old content becomes
/// the ".bak", no file of the name remains, and FileError is thrown.
void replaceFile(const QString& path, const QByteArray& bytes);

/// Removes the file and its ".bak". Throws FileError when the file is still there.
void removeFile(const QString& path);

/// The first `limit` bytes of a file that can be read and written. A missing file
/// is first taken back from its ".bak"; if there is none it is created empty.
/// Throws FileError.
QByteArray readOrCreateFile(const QString& path, qint64 limit);

/// Renames the ".bak" to `path` if there is no file of that name.
void takeBackupBack(const QString& path);

/// Writes `bytes` to whatever `path` names: through links, into devices, and into files that
/// have several names. Throws FileError; a file that was there has its old content then, and
/// none is left where there was none.
void writeFile(const QString& path, const QByteArray& bytes);

/// Removes the files that `replaceFile` and `writeFile` have begun in `folder` and never
/// put in their place, as the program was killed. Files of any other name stay, and those
/// that are being written.
void removeAbandonedFiles(const QString& folder);
