#pragma once

#include "app/Arrangement.h"
#include "base/SiteIcons.h"
#include "browser/BrowserFrame.h"
#include "browser/frmBrowser.h"
#include "history/HistoryList.h"

#include <QIcon>
#include <QList>
#include <QMainWindow>
#include <QMap>
#include <QPointer>
#include <QTimer>

#include <functional>
#include <memory>

class ActiveChild;
class ChildArea;
class ElidedLabel;
class FrameMenus;
class KnownPages;

/// What the frame is made with, and hands on to the windows that ask it.
struct FrameParts {
    /// The folder of the executable, without trailing separator.
    QString programFolder;
    QString title;
    QIcon frameIcon;
    QIcon childIcon;
    QIcon privateIcon;
    /// Outlive the frame.
    Prefer& preferences;
    Prompt& prompt;
    BrowserParts browser;
    /// The program's folder in the user's data; empty: nothing is kept there.
    QString dataFolder = {};
};

/// The main frame: a multiple-document frame that owns every browser window and
/// the history of the run.
class MDIForm1 : public QMainWindow, public BrowserFrame {
    Q_OBJECT
public:
    explicit MDIForm1(FrameParts parts);
    ~MDIForm1() override;

    // The public variables, in their order. Other windows reach them through Shell and
    // BrowserFrame.

    /// Every browser window created and not yet closed, under its number in decimal.
    const KeyedCollection<frmBrowser*>& Browser() const { return m_browser; }
    const HistoryCollection& History() const { return m_history; }
    qint16 newHeight() const { return m_newHeight; }
    void newHeight(qint16 value) { m_newHeight = value; }
    qint16 newWidth() const { return m_newWidth; }
    void newWidth(qint16 value) { m_newWidth = value; }
    bool bNewSize() const { return m_newSize; }
    void bNewSize(bool value) override { m_newSize = value; }
    bool bIsOpenBook() const { return m_isOpenBook; }
    void importBookmarks(const BookmarkFile& file) override { emit bookmarksOffered(file); }
    void bIsOpenBook(bool value) override { m_isOpenBook = value; }
    bool bIsOpenHistory() const { return m_isOpenHistory; }
    void bIsOpenHistory(bool value) override { m_isOpenHistory = value; }
    /// The number of browser windows open.
    qint16 counter() const { return m_counter; }
    void counter(qint16 value) { m_counter = value; }
    const QString& HistoryUrl() const { return m_historyUrl; }
    void HistoryUrl(const QString& url) override { m_historyUrl = url; }
    const QString& EmailClient() const { return m_emailClient; }
    void EmailClient(const QString& value) { m_emailClient = value; }
    /// The frame shows its status bar.
    bool StatusBarCurr() const { return m_statusBarCurr; }
    void StatusBarCurr(bool value) override { m_statusBarCurr = value; }

    // The public operations, in their order.

    void VisitUrl(const QString& url) override;
    void VisitUrlPrivately(const QString& url) override;
    void AddToArchive(const QString& title, const QString& url) override
    {
        emit archiveWanted(title, url);
    }
    void AddPageToArchive() override { emit pageToArchiveWanted(); }
    void AddToHistory(const QString& url, const QString& title) override;
    /// Creates one browser window on `HistoryUrl`, or on the start address.
    void NewBrowser();
    /// As NewBrowser, for the page of `opener` if that is not null; returns the window, or
    /// null if it closed itself at once or the engine would run out of descriptors: the
    /// status line says so then. Throws OverflowError when the numbers run out.
    frmBrowser* CreateBrowser(frmBrowser* opener) override;

    // What start-up and the commands need beside them.

    /// Creates an empty private browser window.
    void NewPrivateBrowser();
    /// As CreateBrowser; `prepare` is called before the window loads.
    frmBrowser* addBrowser(frmBrowser* opener, const std::function<void(frmBrowser&)>& prepare,
                           bool isPrivate = false);

    /// `mayEnd` is asked, after those before it, when the frame is to close;
    /// it may ask the user. False keeps the frame open.
    void addEndCheck(const std::function<bool()>& mayEnd) { m_endChecks.append(mayEnd); }

    /// The frame is closing; a question may still keep it open.
    bool isUnloading() const { return m_unloading; }

    FrameMenus& menus() const { return *m_menus; }
    ChildArea& area() const { return *m_area; }
    ActiveChild& activeChild() const { return *m_activeChild; }
    /// The browser window that is active inside the frame, or null.
    frmBrowser* activeBrowser() const;
    /// Lays out the children by the arrangement that is checked.
    void applyArrangement();
    /// Shows or hides the status bar by `StatusBarCurr`, with its check marks.
    void showStatusBar();
    /// Hides the menu bar, the status bar and the bars of all browser windows for a while, or
    /// shows again those that are to be shown.
    void showBars(bool shown);
    /// Sizes the frame, bounded by what the screen has room for. A side that is as it was
    /// bounded when the frame closes is not stored.
    void openAt(const QSize& size);
    /// Restores a minimised frame, brings it to the front and lays out its
    /// children again; a maximised frame stays maximised.
    void restoreIfMinimized();
    void bringToFront();

    void browserUnloaded(qint32 number) override;
    bool bOpenNewWindow() const override { return m_openNewWindow; }
    void bOpenNewWindow(bool value) override { m_openNewWindow = value; }
    void SetDropDisabled(bool disable) override;
    void statusText(const QString& text) override;
    void addStatusSign(QWidget* sign) override;
    void wouldLose(const QObject* who, const QString& what) override;
    /// All that would be lost if the program ended now, as sentences; empty: nothing.
    QString losses() const { return m_losses.values().join(u' '); }
    Prefer& preferences() override { return m_parts.preferences; }
    Prompt& prompt() override { return m_parts.prompt; }
    const QString& programFolder() const override { return m_parts.programFolder; }
    const QString& dataFolder() const override { return m_parts.dataFolder; }
    const QString& title() const override { return m_parts.title; }
    QIcon frameIcon() const override { return m_parts.frameIcon; }
    SiteIcons& icons() override { return m_icons; }
    QIcon childIcon() const override { return m_parts.childIcon; }
    QIcon privateIcon() const override { return m_parts.privateIcon; }
    ProposalSource& proposals() override;

signals:
    void browserAdded(frmBrowser& window);
    /// What `AddToArchive` and `AddPageToArchive` were called for.
    void archiveWanted(const QString& title, const QString& url);
    void pageToArchiveWanted();
    /// The window is still whole; not sent while the frame closes them all.
    void browserClosing(const frmBrowser& window);
    /// The user wants these bookmarks in the archive.
    void bookmarksOffered(const BookmarkFile& file);
    /// `losses` says something else.
    void lossesChanged();
    /// The frame has unloaded: the program is to end.
    void unloaded();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void buildStatusBar();
    void MDIForm_Load();
    void MDIForm_Activate();
    void MDIForm_Unload();
    void ShowActiveChild();
    /// Without an address the window stays empty: a start page would be told of the visit.
    void openPrivately(const QString& url);
    /// Has a new window load, behind the window `front` unless that is null.
    void load(const QPointer<frmBrowser>& window, frmBrowser* front);
    /// False when one of them stays: an archive whose changes could not be saved. Comes before
    /// the browser windows close, so that these stay as well.
    bool closeFreeWindows();
    /// Lets other windows take the place of one that is about to go.
    void replace(const frmBrowser& closing);
    void storeSizeAndState();
    void stayOnScreen(const QSize& decoration);

    FrameParts m_parts;
    FrameMenus* m_menus;
    ChildArea* m_area;
    ActiveChild* m_activeChild;
    /// The third panel of the status bar, with the status text of the page.
    ElidedLabel* m_statusPanel = nullptr;

    KeyedCollection<frmBrowser*> m_browser;
    HistoryCollection m_history;
    SiteIcons m_icons;
    std::unique_ptr<KnownPages> m_knownPages;
    qint16 m_newHeight = 0;
    qint16 m_newWidth = 0;
    bool m_newSize = false;
    bool m_isOpenBook = false;
    bool m_isOpenHistory = false;
    qint16 m_counter = 0;
    QString m_historyUrl;
    QString m_emailClient;
    QMap<const QObject*, QString> m_losses;
    bool m_statusBarCurr = false;
    qint32 m_windowNumber = 0;
    bool m_openNewWindow = false;
    bool m_unloading = false;
    bool m_isPlaced = false;
    bool m_areBarsShown = true;
    /// Sides that the screen had no room for, as they are shown instead; else -1.
    QSize m_bounded;
    QList<std::function<bool()>> m_endChecks;
    /// Runs out when the windows that have closed, and their processes, have gone.
    QTimer m_sinceClosing;
};
