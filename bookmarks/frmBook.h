#pragma once

#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveExport.h"
#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/BookmarkPlace.h"
#include "bookmarks/ChosenFolder.h"
#include "bookmarks/CommandRunner.h"
#include "history/HistoryList.h"

#include <QHash>
#include <QMainWindow>

#include <memory>

class ArchiveMenus;
class ArchiveStatus;
class ArchiveView;
class LabelEditing;
class Shell;
class TreeFind;
struct BookmarkFile;

/// The archive window: the archive as a tree, its menus and its commands. A free
/// window that belongs to its owner and deletes itself when it closes.
///
/// `bIsOpenBook` of the frame is true from construction until closing is done;
/// whoever deletes the window without closing it has to clear the flag.
class frmBook : public QMainWindow, public BookmarkPlace {
    Q_OBJECT
public:
    /// Loads the archive in the frame's program folder.
    /// `shell` and `history` outlive the window.
    frmBook(Shell& shell, const HistoryCollection& history, QWidget* owner);
    ~frmBook() override;

    // The operations that other windows use. They act on the selected node, may throw
    // Error, and have changed nothing then.

    /// The folder of the selected node (the folder itself, or that of a bookmark); null on
    /// the root or when nothing is selected.
    std::shared_ptr<Thema> selectedFolder() const override;
    /// The selected bookmark; null when the selected node is none.
    std::shared_ptr<Bookmark> selectedBookmark() const override;
    void AddBkmToArchive(const QString& title, const QString& url, const QString& info) override;
    /// Lets the user edit the new folder's label at once.
    void AddDirToArchive(const QString& name);
    /// Without a bookmark the three texts are added as a new one.
    void UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                        const QString& url, const QString& info) override;
    void UpdateDir(const std::shared_ptr<Thema>& folder, const QString& name);
    /// Shows the user what the file offers, and adds it when he agrees.
    void importBookmarks(const BookmarkFile& file);
    void OpenAll();
    void OpenBookmark();
    /// Selects a bookmark that was added and brings it into sight; the status line says where.
    void showAdded(const QModelIndex& bookmark);
    /// Runs `change`, which comes from another window, as a command of this one. Does nothing
    /// but tell the user when the archive could not be read.
    void changeFromOutside(const std::function<void(const ArchiveParts&)>& change);

    Book& Buch() { return m_files.book(); }
    ArchiveView& view() const { return *m_view; }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void buildCommands();
    void buildFindLine();
    void buildLabels();
    void connectView(const HistoryCollection& history);
    QSize firstSize() const;
    void Form_Resize();
    /// Runs the command of a menu item, for a signal.
    CommandRunner::Command runItem(const QString& item);

    void loadArchive();
    bool saveArchive();
    /// Saves, and returns what could not be written, as a text for the user.
    QString written();
    /// False when changes could not be saved and the user will not lose them.
    bool askToSave();
    bool mayLose(const QString& problem);
    /// Tells the frame whether changes would be lost.
    void tellChange();

    void renameFolder();
    void deleteFolder();
    bool confirmed(const Thema& folder);
    void newBookmark();
    void editBookmark();
    void deleteBookmark();
    void showProperties(bool newBookmark);

    Shell& m_shell;
    /// A command first takes over the label that is being edited, and is left out when the
    /// label is refused.
    CommandRunner m_runner;
    ArchiveFiles m_files;
    ArchiveTree m_tree;
    ArchiveEditor m_editor;
    ArchiveExport m_export;
    QWidget* m_client = nullptr;
    ArchiveView* m_view = nullptr;
    std::unique_ptr<TreeFind> m_find;
    std::unique_ptr<LabelEditing> m_labels;
    ArchiveStatus* m_status = nullptr;
    ArchiveMenus* m_menus = nullptr;
    /// By the names of the menu items.
    QHash<QString, CommandRunner::Command> m_commands;
};
