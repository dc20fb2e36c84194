#pragma once

#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/BookSelection.h"
#include "history/HistoryList.h"

#include <QHash>
#include <QMainWindow>

#include <functional>
#include <memory>

class ArchiveView;
class BookCommands;
class BookMenus;
class Shell;
class ElidedLabel;

/// The archive window: the archive as a tree, its menus and its commands. A free
/// window above its owner that deletes itself when it closes.
///
/// `bIsOpenBook` of the frame is true from construction until closing is done;
/// whoever deletes the window without closing it has to clear the flag.
class frmBook : public QMainWindow, public BookSelection {
    Q_OBJECT
public:
    /// Loads the archive in the frame's program folder.
    /// `shell` and `history` outlive the window.
    frmBook(Shell& shell, const HistoryCollection& history, QWidget* owner);
    ~frmBook() override;

    // The look-ups and operations that other windows use. They may throw Error.

    /// See ArchiveTree::GetLAndR_Indx.
    static void GetLAndR_Indx(const QModelIndex& node, qint16& left, qint16& right);
    /// See NodeKeys.h.
    static void GetDirIdx(const ThemaCollection& folders, qint32 number, qint16& position);
    static void GetBookmarkIdx(const BookmarkCollection& bookmarks, qint16 number,
                               qint16& position);
    std::shared_ptr<Thema> selectedFolder() const override;
    std::shared_ptr<Bookmark> selectedBookmark() const override;
    void AddBkmToArchive(const QString& title, const QString& url, const QString& info) override;
    void AddDirToArchive(const QString& name);
    /// Without a bookmark the three texts are added as a new one.
    void UpdateBookmark(const std::shared_ptr<Bookmark>& bookmark, const QString& title,
                        const QString& url, const QString& info) override;
    void UpdateDir(const std::shared_ptr<Thema>& folder, const QString& name);
    void OpenAll();
    void OpenBookmark();

    Book& Buch() { return m_files.book(); }
    ArchiveView& view() const { return *m_view; }
    BookMenus& menus() const { return *m_menus; }
    /// Opens the context menu for the selection; waits until it is closed.
    void popUpMenu(const QPoint& globalPos);

    /// Runs a command of this window: a label being edited is taken over first,
    /// errors become messages, and closing waits until the command is done. The
    /// command is left out when the label is refused.
    void run(const std::function<void()>& command);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void buildMenus();
    void connectItems();
    void connectExports();
    void connectKeys();
    void connectMouse();
    QSize firstSize() const;
    void Form_Resize();
    void updateMenus(const QString& menu);
    void showProperties(bool newBookmark);

    void loadArchive();
    bool saveArchive();
    void saveAndReload();
    void askToSave();
    void unload();
    void tell(const QString& text);
    void labelEdited(const QModelIndex& node, const QString& typed);
    void refuseLabel(const QModelIndex& node, const QString& message);
    /// False when the label that was being edited is refused.
    bool takeLabel();

    Shell& m_shell;
    const HistoryCollection& m_history;
    ArchiveFiles m_files;
    ArchiveTree m_tree;
    QWidget* m_client = nullptr;
    ArchiveView* m_view = nullptr;
    ElidedLabel* m_statusPanel = nullptr;
    BookMenus* m_menus = nullptr;
    std::unique_ptr<BookCommands> m_commands;
    QHash<QString, std::function<void()>> m_byItem;
    /// How many commands are running: one may open another's menu or prompt.
    int m_running = 0;
    bool m_labelRefused = false;
    bool m_closeLater = false;
    bool m_closing = false;
};
