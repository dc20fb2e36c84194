#pragma once

#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveExport.h"
#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/ArchiveTree.h"
#include "history/HistoryList.h"

#include <QHash>
#include <QMainWindow>

#include <functional>
#include <memory>

class ArchiveMenus;
class ArchiveView;
class ElidedLabel;
class Shell;
class TreeFind;

/// The archive window: the archive as a tree, its menus and its commands. A free
/// window above its owner that deletes itself when it closes.
///
/// `bIsOpenBook` of the frame is true from construction until closing is done;
/// whoever deletes the window without closing it has to clear the flag.
class frmBook : public QMainWindow {
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
    std::shared_ptr<Thema> selectedFolder() const;
    /// The selected bookmark; null when the selected node is none.
    std::shared_ptr<Bookmark> selectedBookmark() const;
    void AddBkmToArchive(const QString& title, const QString& url, const QString& info);
    /// Lets the user edit the new folder's label at once.
    void AddDirToArchive(const QString& name);
    /// Without a bookmark the three texts are added as a new one.
    void UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                        const QString& url, const QString& info);
    void UpdateDir(const std::shared_ptr<Thema>& folder, const QString& name);
    void OpenAll();
    void OpenBookmark();

    Book& Buch() { return m_files.book(); }
    ArchiveView& view() const { return *m_view; }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Command = std::function<void()>;

    void buildControls();
    void buildCommands();
    void buildFindLine();
    void connectView(const HistoryCollection& history);
    QSize firstSize() const;
    void Form_Resize();
    void showAddress(const QModelIndex& node);
    void tell(const QString& text);

    /// Runs a command of this window: a label being edited is taken over first, errors
    /// become messages, and closing waits until the command is done. The command is left
    /// out when the label is refused.
    void run(const Command& command);
    /// The command of a menu item, as above, for a signal.
    Command runItem(const QString& item);

    void loadArchive();
    bool saveArchive();
    void askToSave();

    void renameFolder();
    void deleteFolder();
    bool confirmed(const Thema& folder);
    void newBookmark();
    void editBookmark();
    void deleteBookmark();
    void showProperties(bool newBookmark);

    void AfterLabelEdit(const QModelIndex& node, const QString& typed);
    /// Gives the node's folder the name, or returns what the user is told about it.
    QString takeName(const QModelIndex& node, const QString& typed);
    void refuseLabel(const QModelIndex& node, const QString& message);
    /// False when the label that was being edited is refused.
    bool commitLabel();

    Shell& m_shell;
    ArchiveFiles m_files;
    ArchiveTree m_tree;
    ArchiveEditor m_editor;
    ArchiveExport m_export;
    QWidget* m_client = nullptr;
    ArchiveView* m_view = nullptr;
    std::unique_ptr<TreeFind> m_find;
    ElidedLabel* m_statusPanel = nullptr;
    /// The node whose address the status line shows.
    QPersistentModelIndex m_shownNode;
    ArchiveMenus* m_menus = nullptr;
    /// By the names of the menu items.
    QHash<QString, Command> m_commands;
    /// How many commands are running: one may open another's menu or prompt.
    int m_running = 0;
    bool m_labelRefused = false;
    /// The user has closed the window while a command was running.
    bool m_closeLater = false;
    bool m_closing = false;
};
