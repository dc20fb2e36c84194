#pragma once

#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/BookSelection.h"

#include <QMainWindow>

#include <functional>
#include <memory>

class ArchiveView;
class BookCommands;
class BookMenus;
class QLabel;
class Shell;

/// The archive window: the archive as a tree, its menus and its commands. A free
/// window above its owner that deletes itself when it closes.
///
/// `bIsOpenBook` of the frame is true from construction until closing is done;
/// whoever deletes the window without closing it has to clear the flag.
class frmBook : public QMainWindow, public BookSelection {
    Q_OBJECT
public:
    /// Loads the archive in the frame's program folder.
    frmBook(Shell& shell, QWidget* owner);
    ~frmBook() override;

    // The look-ups and operations that other windows use.

    /// The numbers in a node's key; `right` is left alone where there is none.
    static void GetLAndR_Indx(const QModelIndex& node, qint16& left, qint16& right);
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
    /// The text of the status bar's panel.
    void statusText(const QString& text);
    /// Opens the context menu for the selection; waits until it is closed.
    void popUpMenu(const QPoint& globalPos);
    /// Shows the properties dialog, for a new bookmark or for the selected one.
    void showProperties(const std::function<void(bool newBookmark)>& show);

    /// Runs a command of this window: a label being edited is taken over first,
    /// errors become messages, and closing waits until the command is done. The
    /// command is left out when the label is refused.
    void run(const std::function<void()>& command);

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls();
    void buildStatusBar();
    void buildMenus();
    void connectKeys();
    QSize firstSize() const;
    void Form_Resize();
    void updateMenus(const QString& menu);
    void choose(const QString& item);
    void tell(const QString& text);

    void loadArchive();
    bool saveArchive();
    void saveAndReload();
    void askToSave();
    /// False when the label that was being edited is refused.
    bool takeLabel();

    Shell& m_shell;
    ArchiveFiles m_files;
    ArchiveTree m_tree;
    std::unique_ptr<BookCommands> m_commands;
    QWidget* m_client = nullptr;
    ArchiveView* m_view = nullptr;
    QLabel* m_panel = nullptr;
    BookMenus* m_menus = nullptr;
    QHash<QString, std::function<void()>> m_byItem;
    int m_running = 0;
    bool m_closeLater = false;
    bool m_closing = false;
};
