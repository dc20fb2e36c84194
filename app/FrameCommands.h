#pragma once

#include "app/Arrangement.h"
#include "base/Prompt.h"
#include "bookmarks/PageToArchive.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <functional>

class FrameFullScreen;
class ProgramStarter;
class MDIForm1;
class QAction;
class QKeySequence;
class QShortcut;
class frmBook;
struct BookmarkFile;
struct DroppedAddress;

/// What the items of the frame's menus do, under the names of the menu bar's
/// items, and what happens when a menu opens. The keys of the frame act on the active
/// browser window wherever inside the frame the focus is, and whatever state the menu
/// items are in.
class FrameCommands : public QObject {
    Q_OBJECT
public:
    /// Connects itself to the menus and the area of `frame`, which owns it.
    /// `starter` outlives it.
    FrameCommands(MDIForm1& frame, ProgramStarter& starter);

    /// Runs the command of a role; an error is shown as a message.
    void run(const QString& role);

private:
    void buildTable();
    void addKeys();
    QShortcut* addKey(const QKeySequence& key, std::function<void()> step);
    /// Keys of a menu item.
    void addItemKeys(const QString& role, const QList<QKeySequence>& keys);
    /// A key of a button on the toolbar of the active browser window.
    void addButtonKey(const QKeySequence& key, const QString& button);

    void prepare(const QString& role);
    void prepareExtrasMenu();
    void prepareWindowMenu();
    void rebuildWindowList();
    /// Chooses the browser window with this number in the list, 1-based, if there is one.
    void chooseWindow(int number);
    void openDropped(const DroppedAddress& address, bool isPrivate);

    void showPreferences();
    void showInternetOptions();
    void showArchive();
    void addPageToArchive();
    void addToArchive(const QString& title, const QString& address);
    void importBookmarks(const BookmarkFile& file);
    void showHistory();
    static void bringForward(QWidget* window);
    void showAboutBox();
    void toggleStatusBar();
    void startMailClient();
    void arrange(Arrangement mode);
    void toggleAddressBar();
    void toggleToolbar();
    void closeActive();
    void closeAll();
    void tell(const QString& text, Prompt::Icon icon);

    MDIForm1& m_frame;
    ProgramStarter& m_starter;
    FrameFullScreen* m_fullScreen;
    QHash<QString, std::function<void()>> m_commands;
    QPointer<frmBook> m_archive;
    PageToArchive m_pageToArchive;
    QPointer<QWidget> m_history;
    QList<QAction*> m_windowList;
};
