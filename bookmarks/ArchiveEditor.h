#pragma once

#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/ArchiveSteps.h"

#include <QModelIndex>
#include <QString>

#include <memory>
#include <vector>

class ArchiveTree;

/// Changes the archive at a node of its tree and keeps the two in step. A change is marked
/// on the folder and on the archive, and is a step that can be taken back.
///
/// Nothing is changed that could not be read: that, and a node that stands for nothing any
/// more, throws an Error before anything is done.
class ArchiveEditor {
public:
    /// Where a node's folder and bookmark are in the archive; positions count from 1. For a
    /// folder's node there is no bookmark, and its position is 0.
    struct Place {
        qint16 dirIdx = 0;
        std::shared_ptr<Thema> folder;
        qint16 bookmarkIdx = 0;
        std::shared_ptr<Bookmark> bookmark;
    };

    /// Both outlive the editor.
    ArchiveEditor(ArchiveFiles& files, ArchiveTree& tree)
        : m_files(files), m_tree(tree), m_steps(files, tree)
    {
    }

    /// As `ArchiveFiles` loads and saves; the tree is built anew by a load.
    QString load();
    QString save();
    ArchiveSteps& steps() { return m_steps; }

    /// Goes by the numbers in the node's key. Throws NotFoundError for the root and for no
    /// node.
    Place resolve(const QModelIndex& node) const;
    /// The position (from 1) of the first folder with this number, 0 without one.
    static void GetDirIdx(const ThemaCollection& folders, qint32 number, qint16& position);
    /// The position (from 1) of the first bookmark with this number, 0 without one.
    static void GetBookmarkIdx(const BookmarkCollection& bookmarks, qint16 number,
                               qint16& position);

    /// A name that no node has yet.
    QString GetNewDirName() const;
    /// Adds a folder behind that of `reference`, or first at the root. Returns its node;
    /// none with a bookmark for reference: then only the archive gets the folder. Throws
    /// OverflowError for more than 32767 bookmarks.
    QModelIndex addFolder(const QModelIndex& reference, const QString& name,
                          const std::vector<BookmarkTexts>& bookmarks = {});
    void renameFolder(const std::shared_ptr<Thema>& folder, const QString& name);
    /// Saves the archive at once; throws Error, too, when that fails.
    void removeFolder(const QModelIndex& node);

    /// Adds bookmarks behind the one of `node`, or first in its folder. Returns the node of
    /// the first; none without bookmarks. Throws OverflowError past the number 32767.
    QModelIndex addBookmarks(const QModelIndex& node, const std::vector<BookmarkTexts>& bookmarks);
    /// Changes `bookmark`, which belongs to the folder of `node`.
    void changeBookmark(const QModelIndex& node, const std::shared_ptr<Bookmark>& bookmark,
                        const BookmarkTexts& texts);
    void removeBookmark(const QModelIndex& node);

private:
    ArchiveFiles& m_files;
    ArchiveTree& m_tree;
    ArchiveSteps m_steps;
};
