#pragma once

#include "browser/BrowserCaption.h"
#include "browser/EngineControl.h"

#include <QMdiSubWindow>
#include <QPointer>

#include <optional>

class AddressBar;
class BrowserFocus;
class BrowserFrame;
class BrowserToolbar;
class BusyDisplay;
class SystemMenu;
struct BrowserBars;

/// What a browser window is made with.
struct BrowserParts {
    EngineFactory engine;
    /// The machine's drives as "C: [NAME]".
    std::function<QStringList()> drives;
    /// The engine of a private window.
    EngineFactory privateEngine = {};
};

/// A browser window: one child of the frame that shows one page. It drives its
/// engine and handles the engine's events; the frame creates, numbers, arranges
/// and owns it. All handlers ignore errors statement by statement.
class frmBrowser : public QMdiSubWindow {
    Q_OBJECT
public:
    /// `frame` outlives the window. A private one tells it of no visit.
    frmBrowser(BrowserFrame& frame, const BrowserParts& parts, bool isPrivate = false);
    ~frmBrowser() override;

    /// The address that the window opens when it loads; may be empty.
    const QString& StartingAddress() const { return m_startingAddress; }
    void StartingAddress(const QString& value) { m_startingAddress = value; }
    /// The number under which the frame holds the window; 0 until it is told.
    qint32 windowKey() const { return m_windowKey; }
    void windowKey(qint32 value) { m_windowKey = value; }
    /// The window was made on a page's request.
    bool bNewWindow() const { return m_newWindow; }
    void bNewWindow(bool value) { m_newWindow = value; }

    bool isPrivate() const { return m_isPrivate; }

    /// The window whose page has asked for this one, while it is open; else null.
    frmBrowser* opener() const { return m_opener; }
    void opener(frmBrowser* value) { m_opener = value; }

    /// Whether the page plays, or is silenced: the window's icon is marked then.
    bool isHeard() const { return m_caption.isHeard(); }

    bool isAddressBarShown() const;
    void showAddressBar(bool shown);
    bool isToolbarShown() const;
    void showToolbar(bool shown);
    /// Hides both bars for a while, whether they are to be shown or not.
    void hideBars(bool hidden);

    /// The address of the page; until there is one, that the window is about to open.
    QString address() const;
    /// The name of the page, or what it was called when the window was open last.
    QString pageTitle() const;
    /// The pages that can be gone back and forth to, as the engine keeps them; empty if none.
    QByteArray pages() const;
    /// To be told before the window loads: it begins with these pages, if there are any, in
    /// place of its start address.
    void beginWith(const QByteArray& pages) { m_beginning = pages; }
    /// To be told before the window loads: it is called `title`, and opens its start address
    /// only when it can be seen.
    void beginWhenSeen(const QString& title);
    /// Whether the user can see any of the page.
    void pageSeen(bool isSeen);

    /// The window's load: shows the window and opens its start address.
    void load();
    /// Sets the engine's switches.
    void InitEngine();
    /// Lays out the bars and the page, as after a bar was shown or hidden.
    void PubResize();
    /// What the bars that are shown take of the window's height, in pixels.
    int barsHeight() const;
    /// The window has become the active one.
    void activated();
    /// Whether the window has closed and is about to be deleted.
    bool isUnloaded() const { return m_unloaded; }

    /// The engine of this window. It shows what the page of another window wants to
    /// open in a new one.
    EngineControl* brwWebBrowser() const { return m_engine.get(); }

    /// Puts the home and search addresses of the preferences into the tool tips.
    void refreshToolTips();
    /// Puts the cursor into the address line, which is shown if need be.
    void focusAddress();
    /// Does what a click on the toolbar button with this key does.
    void clickButton(const QString& key);
    /// Closes the window though its page might have the user asked first.
    void closeUnasked();
    /// As the button "Refresh", past the engine's cache.
    void refreshPastCache();

signals:
    /// The user has moved or sized the window with the mouse or the keyboard.
    void placedByHand();
    /// Another page is shown, or it has another address.
    void pageChanged();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildControls(const BrowserParts& parts);
    void connectControls();
    void connectEscape();
    void connectEngine();

    void NavigateToAddress(const QString& address, bool isTyped);
    void StartBusy();
    void begin();
    void navigationByButton(const std::function<void()>& step);
    void stopLoading();
    void busyTick();
    void driveClicked(const QString& entry);
    void showIcon(const QIcon& given);
    QString locationName() const;
    std::optional<EngineDocument> document() const;

    void newWindowRequested(EngineControl*& engine, bool& cancel);
    void navigateComplete(const EngineFrame& frame, const QString& url);
    void setWindowHeight(int content);
    void setWindowWidth(int content);
    /// Keeps the window inside the frame's area if it has room there.
    void sizeForPage(const QSize& size);

    BrowserBars bars() const;
    void unload();

    BrowserFrame& m_frame;
    bool m_isPrivate;
    std::function<QStringList()> m_drives;
    BrowserCaption m_caption;
    QString m_startingAddress;
    QByteArray m_beginning;
    /// The title of a page that waits until it can be seen.
    std::optional<QString> m_waiting;
    bool m_isSeen = false;
    qint32 m_windowKey = 0;
    bool m_newWindow = false;
    QPointer<frmBrowser> m_opener;
    bool m_isAddressBarShown = true;
    bool m_isToolbarShown = true;
    bool m_areBarsHidden = false;
    bool m_updatingList = false;
    bool m_unloaded = false;
    bool m_mayClose = false;

    QWidget* m_client = nullptr;
    BrowserToolbar* m_toolbar = nullptr;
    AddressBar* m_addressBar = nullptr;
    BusyDisplay* m_busy = nullptr;
    std::unique_ptr<EngineControl> m_engine;
    std::unique_ptr<BrowserFocus> m_focus;
    std::unique_ptr<SystemMenu> m_systemMenu;
};
