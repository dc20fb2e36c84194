#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

/// Keeps what an index that is gone, empty or cut off no longer lists, before new folders
/// take the names of the old files: a folder's file that is not in `listed` ("1.bkm", ...)
/// is renamed to "1.bkm.alt" (".alt2", ... when that is taken), a cut index is copied.
/// Nothing happens where the index is whole and lists folders. Returns the bare names of
/// what was kept. Throws FileError, and goes no further, when something cannot be kept.
QStringList keepUnlistedFiles(const QString& programFolder, const QSet<QString>& listed);
