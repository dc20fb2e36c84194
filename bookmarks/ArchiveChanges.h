#pragma once

#include "bookmarks/Thema.h"

#include <QPersistentModelIndex>
#include <QString>
#include <QUndoCommand>

#include <memory>
#include <vector>

class ArchiveFiles;
class ArchiveTree;

/// What changes act on, and what the last of them has left.
struct ChangedArchive {
    ArchiveFiles& files;
    ArchiveTree& tree;
    /// The node that was changed, or one beside it if it is gone.
    QPersistentModelIndex reached;
    /// The change has saved the archive, and nothing was changed since.
    bool isSaved = false;
    /// What that save could not write, as a text for the user.
    QString problem;
};

/// The texts of a bookmark.
struct BookmarkTexts {
    QString titel;
    QString url;
    QString info;
};

/// Where a folder is, or is to be.
struct FolderPlace {
    /// In the archive, from 1. At 0 it takes the place of all folders, of which the tree
    /// shows none.
    qint16 position = 0;
    /// Below the tree's root; -1 where only the archive gets the folder.
    int row = 0;
};

/// The changes of an archive that can be done, taken back and repeated, each from the state
/// in which it left the archive. Both ways they mark the folder and the archive changed and
/// keep the tree in step. Folders and bookmarks keep their numbers: the same object comes and
/// goes. Their text says in German what they do.
using Change = std::unique_ptr<QUndoCommand>;

Change addedFolder(ChangedArchive& archive, const FolderPlace& place,
                   const std::shared_ptr<Thema>& folder);
/// Saves the archive at once, and so does taking it back, which writes the folder's file anew.
Change removedFolder(ChangedArchive& archive, const FolderPlace& place,
                     const std::shared_ptr<Thema>& folder);
Change renamedFolder(ChangedArchive& archive, const std::shared_ptr<Thema>& folder,
                     const QString& name);

/// `row` counts from 0 in the folder, which the tree shows.
Change addedBookmarks(ChangedArchive& archive, const std::shared_ptr<Thema>& folder, int row,
                      const std::vector<std::shared_ptr<Bookmark>>& bookmarks);
Change removedBookmark(ChangedArchive& archive, const std::shared_ptr<Thema>& folder, int row);
Change changedBookmark(ChangedArchive& archive, const std::shared_ptr<Thema>& folder, int row,
                       const BookmarkTexts& texts);
