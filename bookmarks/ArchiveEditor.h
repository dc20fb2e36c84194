#pragma once

#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/ArchiveMenuStates.h"
#include "bookmarks/FolderNames.h"

#include <QModelIndex>

#include <functional>
#include <memory>

class ArchiveTree;
class ArchiveView;
class QWidget;
class Shell;

/// The commands that change and use the archive. Each acts on the selected node
/// and keeps tree and archive in step; one whose selection does not fit does
/// nothing. Changes are marked on the folder and on the archive. All of them may
/// throw Error, and have changed nothing then.
class BookCommands {
public:
    struct Parts {
        ArchiveFiles& files;
        ArchiveTree& tree;
        ArchiveView& view;
        Shell& shell;
        QWidget* window;
    };

    /// The parts outlive the commands.
    explicit BookCommands(const Parts& parts) : m(parts) {}

    std::shared_ptr<Thema> selectedFolder() const;
    std::shared_ptr<Bookmark> selectedBookmark() const;
    ArchiveSelection selection() const;
    /// The address of a bookmark's node.
    QString url(const QModelIndex& node) const { return resolve(node).bookmark->Url(); }

    void addFolder();
    void AddDirToArchive(const QString& name);
    void renameFolder();
    /// Takes over the label that was typed, unless it is refused.
    DirNameCheck AfterLabelEdit(const QModelIndex& node, const QString& typed);
    void UpdateDir(const std::shared_ptr<Thema>& folder, const QString& name);
    void deleteFolder();

    /// `show` opens the properties dialog, for a new bookmark or the selected one.
    void addBookmark(const std::function<void(bool newBookmark)>& show);
    void editBookmark(const std::function<void(bool newBookmark)>& show);
    void AddBkmToArchive(const QString& title, const QString& url, const QString& info);
    void UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                        const QString& url, const QString& info);
    void deleteBookmark();
    void OpenAll();
    void OpenBookmark();

private:
    /// Where a node's folder and bookmark are in the archive.
    struct Place {
        qint16 dirIdx = 0;
        std::shared_ptr<Thema> folder;
        qint16 bookmarkIdx = 0;
        std::shared_ptr<Bookmark> bookmark;
    };

    /// Throws NotFoundError for the root and for none.
    Place resolve(const QModelIndex& node) const;
    QModelIndex folderNode(const QModelIndex& node) const;
    bool IsNameFree(const QString& name) const;
    QString GetNewDirName() const;
    void markChanged(Thema& folder);
    bool confirmed(const Thema& folder) const;

    Parts m;
};
