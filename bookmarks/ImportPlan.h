#pragma once

#include "base/BookmarkFile.h"
#include "bookmarks/ArchiveChanges.h"

#include <QHash>
#include <QSet>
#include <QStringList>

#include <vector>

class Book;

/// What an import has to know of the archive that it goes into.
struct ArchiveContents {
    /// The texts of all nodes of the tree: no new folder may be named like one of them.
    QSet<QString> texts;
    /// The addresses in the folders of a name; those of "Reisen (2)" also under "Reisen".
    QHash<QString, QSet<QString>> addresses;
    /// How many folders may still be added.
    int room = 0;

    static ArchiveContents of(const Book& book);
};

/// What an import would do, or has done: new folders, with the texts as the archive's files
/// hold them.
///
/// A bookmark whose address stands already in a folder of that name, in the archive or in the
/// file, is left out; so is one whose address nobody could open: scripts, the searches of other
/// browsers, and what the archive would cut or change. Of the other texts the archive keeps as
/// much as it can. A folder gets the names of those around it, too, and a number where its name
/// is taken; a folder without bookmarks of its own is none.
struct ImportPlan {
    struct Folder {
        QString name;
        std::vector<BookmarkTexts> bookmarks;
    };

    /// The file's name.
    QString from;
    std::vector<Folder> folders;
    /// How many folders of the file have bookmarks.
    int offeredFolders = 0;
    /// How many bookmarks there are: in the file, to be added, in the archive already, twice in
    /// the file, left out for other reasons, cut, with "?" in the place of characters.
    int offered = 0;
    int added = 0;
    int present = 0;
    int doubled = 0;
    int unfit = 0;
    int cut = 0;
    int replaced = 0;
    /// False where the file holds more than was read.
    bool isWhole = true;
    /// A line for each bookmark that is left out, and why.
    QStringList leftOut;
    /// A line for each that the archive does not keep as it is.
    QStringList changed;

    static ImportPlan of(const BookmarkFile& file, const ArchiveContents& archive);

    /// For the user: before it is done, and after it.
    QString question() const;
    QString result() const;
    /// All that is left out or changed, line by line; empty where nothing is.
    QString list() const;
};
