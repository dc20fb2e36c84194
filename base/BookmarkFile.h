#pragma once

#include <QString>

#include <vector>

/// The bookmarks that a file offers to the archive, in the file's order and with its texts: on
/// one line (descriptions: with CR LF between their lines), but of any length and with any
/// characters.
struct BookmarkFile {
    struct Folder {
        /// The folder around it; -1 for the file itself.
        int parent = -1;
        QString name;
    };
    struct Entry {
        int folder = 0;
        QString titel;
        QString url;
        QString info;
    };

    /// The first one is the file itself, under its name without ending. A folder stands behind
    /// the one around it.
    std::vector<Folder> folders;
    std::vector<Entry> bookmarks;
    /// False where the file holds more than anybody reads of it.
    bool isWhole = true;
};
