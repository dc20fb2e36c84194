#pragma once

#include <QSet>
#include <QStringList>

class Book;

/// Gives an archive without folders its first one, with three bookmarks, and
/// saves both. Call it only after a load that found no folder, never after one
/// that failed.
///
/// Throws nothing.
void createDefaultArchive(Book& book, const QString& programFolder);

/// Keeps what an index that is gone, empty or cut off has left behind, before new folders
/// take its name: the files of folders that are not `listed` ("1.bkm", ...) become
/// "1.bkm.alt" and so on (".alt2", ... when that is taken), a cut index is copied.
/// Nothing happens where the index is whole and lists folders. Returns the bare names.
/// Throws FileError, and goes no further, when something cannot be kept.
QStringList keepUnlistedFiles(const QString& programFolder, const QSet<QString>& listed);
