#include "app/FrameCommands.h"

#include "app/ActiveChild.h"
#include "app/ChildArea.h"
#include "app/ClosedWindows.h"
#include "app/EdgeDrags.h"
#include "app/FrameFullScreen.h"
#include "app/FrameMenus.h"
#include "app/MDIForm1.h"
#include "app/ProgramStarter.h"
#include "app/frmAbout.h"
#include "app/frmEinstell.h"
#include "base/BookmarkFile.h"
#include "base/Maker.h"
#include "base/Prefer.h"
#include "base/RunCommand.h"
#include "bookmarks/frmBook.h"
#include "browser/PageTexts.h"
#include "history/frmHistory.h"

#include <QAction>
#include <QDeadlineTimer>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QWindow>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// How many letters of a title fit when the list of so many windows takes several columns: the
/// last one would lie beside the screen.
qsizetype longestTitleIn(const QMenu& menu, qsizetype windows)
{
    constexpr int besideTitle = 14; // check mark, number and key, in letters
    const QSize room = menu.screen()->availableSize();
    const int row = menu.actionGeometry(menu.actions().constFirst()).height();
    const qsizetype columns = 1 + (menu.actions().size() + windows) * row / room.height();
    const qsizetype letters = room.width() / columns / menu.fontMetrics().horizontalAdvance(u'n');
    return columns == 1 ? longestListTitle
                        : std::clamp<qsizetype>(letters - besideTitle, 10, longestListTitle);
}

/// Runs `action` when the window has been put into its place, or a second later: a dialog would
/// not find the middle of a window that has just been opened. Not at all if it goes before.
void runWhenPlaced(QWidget& window, const std::function<void()>& action,
                   QDeadlineTimer end = QDeadlineTimer(1000))
{
    const QWindow* const native = window.windowHandle();
    if ((native != nullptr && native->isExposed()) || end.hasExpired())
        action();
    else
        QTimer::singleShot(20, &window,
                           [&window, action, end] { runWhenPlaced(window, action, end); });
}
} // namespace

FrameCommands::FrameCommands(MDIForm1& frame, ProgramStarter& starter)
    : QObject(&frame), m_frame(frame), m_starter(starter), m_fullScreen(new FrameFullScreen(frame)),
      m_pageToArchive(frame, frame.History())
{
    buildTable();
    FrameMenus& menus = frame.menus();
    connect(&menus, &FrameMenus::chosen, this, &FrameCommands::run);
    connect(&menus, &FrameMenus::opening, this, &FrameCommands::prepare);
    connect(&frame.area(), &ChildArea::contextMenuWanted, this,
            [&menus](const QPoint& position) { menus.contextMenu()->popup(position); });
    connect(&frame, &MDIForm1::bookmarksOffered, this, &FrameCommands::importBookmarks);
    connect(&frame.area(), &ChildArea::addressDropped, this, &FrameCommands::openDropped);
    // Later, as they may come from within the page's menu, and the page may go meanwhile.
    connect(&frame, &MDIForm1::archiveWanted, this, &FrameCommands::addToArchive,
            Qt::QueuedConnection);
    connect(&frame, &MDIForm1::pageToArchiveWanted, this, &FrameCommands::addPageToArchive,
            Qt::QueuedConnection);
    addKeys();
    // Belongs to the frame.
    new EdgeDrags(m_frame, [this] { return m_frame.bIsOpenBook() ? m_archive.data() : nullptr; });
}

void FrameCommands::buildTable()
{
    m_commands = {
        {u"mn_Browser"_s, [this] { m_frame.NewBrowser(); }},
        {u"mn_Einstellungen"_s, [this] { showPreferences(); }},
        {u"mn_IEProp"_s, [this] { showInternetOptions(); }},
        {u"mn_Exit"_s, [this] { m_frame.close(); }},
        {u"mn_Bookmarks"_s, [this] { showArchive(); }},
        {u"mn_Historie"_s, [this] { showHistory(); }},
        {u"mn_Toggle"_s, [this] { toggleStatusBar(); }},
        {u"mn_Email"_s, [this] { startMailClient(); }},
        {u"mn_Untereinander"_s, [this] { arrange(Arrangement::TileHorizontal); }},
        {u"mn_Nebeneinander"_s, [this] { arrange(Arrangement::TileVertical); }},
        {u"mn_Kaskadiert"_s, [this] { arrange(Arrangement::Cascade); }},
        {u"mn_adresszeile"_s, [this] { toggleAddressBar(); }},
        {u"mn_toolbar"_s, [this] { toggleToolbar(); }},
        {u"mn_Aktivschließen"_s, [this] { closeActive(); }},
        {u"mn_Alleschließen"_s, [this] { closeAll(); }},
        {u"mn_Tessera"_s, [this] { showAboutBox(); }},
        {u"mn_loomwork"_s, [this] { m_frame.VisitUrl(maker::webSite()); }},
    };
}

void FrameCommands::addKeys()
{
    addItemKeys(u"mn_Browser"_s, {Qt::CTRL | Qt::Key_N, Qt::CTRL | Qt::Key_T});
    addItemKeys(u"mn_Historie"_s, {Qt::CTRL | Qt::Key_H});
    addItemKeys(u"mn_Bookmarks"_s, {Qt::CTRL | Qt::SHIFT | Qt::Key_O});
    addItemKeys(u"mn_Aktivschließen"_s, {Qt::CTRL | Qt::Key_W, Qt::CTRL | Qt::Key_F4});
    addItemKeys(u"mn_Exit"_s, {Qt::CTRL | Qt::Key_Q});
    addButtonKey(Qt::Key_F5, u"Refresh"_s);
    addButtonKey(Qt::CTRL | Qt::Key_R, u"Refresh"_s);
    addButtonKey(Qt::ALT | Qt::Key_Left, u"Back"_s);
    addButtonKey(Qt::ALT | Qt::Key_Right, u"Forward"_s);
    addButtonKey(Qt::ALT | Qt::Key_Home, u"Home"_s);
    for (const QKeySequence& key : {QKeySequence(Qt::CTRL | Qt::Key_L), QKeySequence(Qt::Key_F6)}) {
        addKey(key, [this] {
            m_fullScreen->reveal();
            if (frmBrowser* active = m_frame.activeBrowser())
                active->focusAddress();
        });
    }
    for (int number = 1; number <= 9; ++number)
        addKey(Qt::CTRL | Qt::Key(Qt::Key_0 + number), [this, number] { chooseWindow(number); });
    addKey(Qt::CTRL | Qt::SHIFT | Qt::Key_N,
           [this] { runCommand(m_frame, &m_frame, [this] { m_frame.NewPrivateBrowser(); }); });
    addKey(Qt::CTRL | Qt::Key_D, [this] { addPageToArchive(); });
    auto* const closed = new ClosedWindows(m_frame);
    addKey(Qt::CTRL | Qt::SHIFT | Qt::Key_T, [closed] { closed->reopenLast(); });
    addKey(Qt::Key_F11, [this] { m_fullScreen->toggle(); });
    addKey(Qt::CTRL | Qt::Key_F5, [this] {
        if (frmBrowser* active = m_frame.activeBrowser())
            active->refreshPastCache();
    });
    addKey(Qt::CTRL | Qt::Key_Tab, [this] { m_frame.activeChild().chooseNext(); });
    addKey(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, [this] { m_frame.activeChild().choosePrevious(); });
    addKey(Qt::ALT | Qt::Key_Minus, [this] {
        if (frmBrowser* active = m_frame.activeBrowser())
            active->showSystemMenu();
    });
    addKey(Qt::Key_F10, [this] {
        m_fullScreen->reveal();
        QMenuBar& bar = *m_frame.menuBar();
        bar.setActiveAction(bar.actions().constFirst());
    });
}

QShortcut* FrameCommands::addKey(const QKeySequence& key, std::function<void()> step)
{
    auto* shortcut = new QShortcut(key, &m_frame);
    connect(shortcut, &QShortcut::activated, this, std::move(step));
    return shortcut;
}

void FrameCommands::addItemKeys(const QString& role, const QList<QKeySequence>& keys)
{
    // The item has the key, so that its caption shows it. But a disabled item would take the
    // key and do nothing, so a shortcut stands in for it as long as it is disabled: of two
    // owners of a key at the same time neither would get it.
    QAction* item = m_frame.menus().item(role);
    item->setShortcuts(keys);
    for (const QKeySequence& key : keys) {
        QShortcut* const standIn = addKey(key, [this, role] { run(role); });
        const auto follow = [item, standIn] { standIn->setEnabled(!item->isEnabled()); };
        connect(item, &QAction::enabledChanged, standIn, follow);
        follow();
    }
}

void FrameCommands::addButtonKey(const QKeySequence& key, const QString& button)
{
    addKey(key, [this, button] {
        if (frmBrowser* active = m_frame.activeBrowser())
            active->clickButton(button);
    });
}

void FrameCommands::run(const QString& role)
{
    if (const auto command = m_commands.value(role))
        runCommand(m_frame, &m_frame, command);
}

void FrameCommands::prepare(const QString& role)
{
    if (role == "mn_Anzeige"_L1)
        prepareExtrasMenu();
    else if (role == "mn_Fenster"_L1)
        prepareWindowMenu();
}

void FrameCommands::prepareExtrasMenu()
{
    // The context menu's item stays as it is.
    m_frame.menus().item(u"mn_Historie"_s)->setEnabled(m_frame.History().Count() > 1);
}

void FrameCommands::prepareWindowMenu()
{
    FrameMenus& menus = m_frame.menus();
    const bool any = !m_frame.Browser().IsEmpty();
    for (const auto& role : {u"mn_Untereinander"_s, u"mn_Nebeneinander"_s, u"mn_Kaskadiert"_s,
                             u"mn_Aktives"_s, u"mn_Aktivschließen"_s, u"mn_Alleschließen"_s})
        menus.enable(role, any);
    if (!any) // windows opened from now on are not arranged until the user says so again
        menus.checkArrangement(Arrangement::None);
    if (const frmBrowser* active = m_frame.activeBrowser()) {
        menus.check(u"mn_adresszeile"_s, active->isAddressBarShown());
        menus.check(u"mn_toolbar"_s, active->isToolbarShown());
    }
    rebuildWindowList();
}

void FrameCommands::rebuildWindowList()
{
    qDeleteAll(m_windowList);
    m_windowList.clear();
    QMenu* menu = m_frame.menus().item(u"mn_Fenster"_s)->menu();
    const qsizetype longest = longestTitleIn(*menu, m_frame.Browser().Count());
    int number = 0;
    for (frmBrowser* window : m_frame.Browser()) {
        if (m_windowList.isEmpty())
            m_windowList.append(menu->addSeparator());
        const qsizetype kept = window->isPrivate() ? privateMark.size() : 0;
        auto* entry =
            new QAction(windowListEntry(++number, window->windowTitle(), longest, kept), menu);
        entry->setCheckable(true);
        entry->setChecked(window == m_frame.activeBrowser());
        if (window->isHeard() || window->isPrivate())
            entry->setIcon(window->windowIcon());
        connect(entry, &QAction::triggered, window,
                [this, window] { m_frame.activeChild().choose(*window); });
        menu->addAction(entry);
        m_windowList.append(entry);
    }
}

void FrameCommands::chooseWindow(int number)
{
    for (frmBrowser* window : m_frame.Browser())
        if (--number == 0)
            m_frame.activeChild().choose(*window);
}

void FrameCommands::openDropped(const DroppedAddress& address, bool isPrivate)
{
    const auto open = [&](const QString& url) {
        if (isPrivate)
            m_frame.VisitUrlPrivately(url);
        else
            m_frame.VisitUrl(url);
    };
    runCommand(m_frame, &m_frame, [&] {
        if (address.text)
            open(*address.text);
        if (!address.files.isEmpty())
            open(address.files.constFirst());
    });
}

void FrameCommands::showPreferences()
{
    {
        const DropsDisabled guard(m_frame);
        frmEinstell(m_frame, &m_frame).exec();
    }
    // Closing a dialog need not activate the frame.
    m_frame.showStatusBar();
    if (frmBrowser* active = m_frame.activeBrowser())
        active->refreshToolTips();
}

void FrameCommands::showInternetOptions()
{
    if (m_starter.start(u"rundll32.exe"_s, {u"shell32.dll,Control_RunDLL"_s, u"inetcpl.cpl,,0"_s}))
        return;
    if (!m_starter.start(u"gnome-control-center"_s, {u"network"_s}))
        m_starter.start(u"systemsettings"_s, {u"kcm_proxy"_s});
}

void FrameCommands::showArchive()
{
    if (!m_frame.bIsOpenBook())
        m_archive = new frmBook(m_frame, m_frame.History(), &m_frame);
    bringForward(m_archive);
}

void FrameCommands::addPageToArchive()
{
    const frmBrowser* active = m_frame.activeBrowser();
    const QString address = active == nullptr ? QString() : active->address();
    if (active == nullptr || address.isEmpty())
        m_frame.statusText(u"Hier ist keine Seite, die ins Archiv kann."_s);
    else
        addToArchive(active->pageTitle(), address);
}

void FrameCommands::addToArchive(const QString& title, const QString& address)
{
    m_pageToArchive.add(&m_frame, m_frame.bIsOpenBook() ? m_archive.data() : nullptr, title,
                        address);
}

void FrameCommands::importBookmarks(const BookmarkFile& file)
{
    runCommand(m_frame, &m_frame, [this] { showArchive(); });
    if (frmBook* const archive = m_archive)
        runWhenPlaced(*archive, [archive, file] { archive->importBookmarks(file); });
}

void FrameCommands::showHistory()
{
    if (!m_frame.bIsOpenHistory())
        m_history = new frmHistory(m_frame, m_frame.History(), &m_frame);
    bringForward(m_history);
}

void FrameCommands::bringForward(QWidget* window)
{
    if (window == nullptr) // it closed itself while it loaded
        return;
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->show();
    window->raise();
    window->activateWindow();
}

void FrameCommands::showAboutBox()
{
    auto* about = new frmAbout(m_frame, &m_frame);
    about->show();
}

void FrameCommands::toggleStatusBar()
{
    m_frame.StatusBarCurr(!m_frame.StatusBarCurr());
    m_frame.showStatusBar();
}

void FrameCommands::startMailClient()
{
    const QString& mailClient = m_frame.preferences().MailClient();
    if (mailClient.isEmpty())
        tell(u"Bitte konfigurieren Sie Ihre E-Mail Anwendung."_s, Prompt::Icon::Information);
    else if (!m_starter.start(mailClient, {}))
        tell(u"Die Anwendung '"_s + mailClient + u"' konnte nicht gefunden werden."_s,
             Prompt::Icon::Exclamation);
}

void FrameCommands::tell(const QString& text, Prompt::Icon icon)
{
    const DropsDisabled guard(m_frame);
    m_frame.prompt().tell(&m_frame, text, u"Meldung"_s, icon);
}

void FrameCommands::arrange(Arrangement mode)
{
    m_frame.area().arrange(mode);
    m_frame.menus().checkArrangement(mode);
}

void FrameCommands::toggleAddressBar()
{
    frmBrowser* active = m_frame.activeBrowser();
    if (active == nullptr)
        return;
    active->showAddressBar(!active->isAddressBarShown());
    active->PubResize();
    m_frame.menus().check(u"mn_adresszeile"_s, active->isAddressBarShown());
}

void FrameCommands::toggleToolbar()
{
    frmBrowser* active = m_frame.activeBrowser();
    if (active == nullptr)
        return;
    active->showToolbar(!active->isToolbarShown());
    active->PubResize();
    m_frame.menus().check(u"mn_toolbar"_s, active->isToolbarShown());
}

void FrameCommands::closeActive()
{
    if (frmBrowser* active = m_frame.activeBrowser())
        active->close();
}

void FrameCommands::closeAll()
{
    // Each window takes itself out of the collection while it is walked.
    const KeyedCollection<frmBrowser*> open = m_frame.Browser();
    for (frmBrowser* window : open)
        window->close();
}
