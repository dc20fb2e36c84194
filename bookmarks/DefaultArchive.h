#pragma once

#include <QString>

class Book;

/// Gives an archive without folders its first one, with three bookmarks, and
/// saves both. Call it only after a load that found no folder, never after one
/// that failed.
///
/// Files of folders ("1.bkm", ...) with content, left over from an archive whose index
/// is gone, are kept as "1.bkm.alt" and so on (".alt2", ... when that is taken). Throws FileError,
/// and changes nothing, when it cannot be. The save itself throws nothing.
void createDefaultArchive(Book& book, const QString& programFolder);
