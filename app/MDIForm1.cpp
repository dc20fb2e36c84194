#include "app/MDIForm1.h"

#include "app/ActiveChild.h"
#include "app/ChildArea.h"
#include "app/FrameMenus.h"
#include "app/KnownPages.h"
#include "app/PaintPacer.h"
#include "app/SeenPages.h"
#include "base/ElidedLabel.h"
#include "base/FreeMemory.h"
#include "base/Maker.h"
#include "base/Prefer.h"
#include "base/RunCommand.h"
#include "base/Twips.h"
#include "base/WholeNumber.h"
#include "launcher/DescriptorLimit.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QIcon>
#include <QLabel>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

namespace {
/// How long a window that has closed, its page and its process take to go.
constexpr std::chrono::seconds untilClosed(3);
} // namespace

MDIForm1::MDIForm1(FrameParts parts)
    : m_parts(std::move(parts)), m_menus(new FrameMenus(this, maker::webSite())),
      m_area(new ChildArea(this)), m_activeChild(new ActiveChild(*m_area)),
      m_knownPages(std::make_unique<KnownPages>(m_history, m_parts.programFolder, nullptr))
{
    setObjectName(u"MDIForm1"_s);
    setCentralWidget(m_area);
    buildStatusBar();
    setMinimumSize(200, 120);
    m_menus->checkArrangement(Arrangement::TileHorizontal);
    new SeenPages(*m_area); // before the focus goes into the page of the window that is activated
    connect(m_area, &QMdiArea::subWindowActivated, this, [](QMdiSubWindow* window) {
        if (auto* browser = qobject_cast<frmBrowser*>(window))
            browser->activated();
    });
    new PaintPacer(this); // belongs to the frame
    MDIForm_Load();
}

MDIForm1::~MDIForm1()
{
    // Children report to the frame while they are destroyed, when it must still have its
    // members.
    delete m_area;
}

void MDIForm1::buildStatusBar()
{
    auto* bar = new QStatusBar(this);
    bar->setObjectName(u"StatusBar1"_s);
    bar->setAccessibleName(u"Status-Zeile"_s);
    for (const auto& name : {u"panel1"_s, u"panel2"_s}) {
        auto* empty = new QLabel(bar);
        empty->setObjectName(name);
        empty->setFixedWidth(0);
        bar->addPermanentWidget(empty);
    }
    m_statusPanel = new ElidedLabel(u"panel3"_s, bar);
    bar->addPermanentWidget(m_statusPanel, 1);
    setStatusBar(bar);
}

void MDIForm1::MDIForm_Load()
{
    m_sinceClosing.setSingleShot(true);
    m_sinceClosing.setInterval(untilClosed);
    connect(&m_sinceClosing, &QTimer::timeout, this, &returnFreeMemory);
    m_isOpenBook = false;
    m_isOpenHistory = false;
    m_area->acceptAddresses(true);
}

void MDIForm1::MDIForm_Activate()
{
    showStatusBar();
    if (m_isPlaced)
        return;
    m_isPlaced = true;
    if (!isMaximized() && !isMinimized())
        stayOnScreen(frameGeometry().size() - size());
}

void MDIForm1::VisitUrl(const QString& url)
{
    if (url.isEmpty())
        return;
    m_historyUrl = url;
    NewBrowser();
    m_historyUrl.clear();
}

void MDIForm1::VisitUrlPrivately(const QString& url)
{
    if (!url.isEmpty())
        openPrivately(url);
}

void MDIForm1::NewPrivateBrowser()
{
    openPrivately({});
}

void MDIForm1::openPrivately(const QString& url)
{
    addBrowser(
        nullptr, [&](frmBrowser& window) { window.StartingAddress(url); }, true);
}

void MDIForm1::AddToHistory(const QString& url, const QString& title)
{
    addVisit(m_history, url, title, QDateTime::currentDateTime(), preferences().HistoryRows());
}

void MDIForm1::NewBrowser()
{
    CreateBrowser(nullptr);
}

frmBrowser* MDIForm1::CreateBrowser(frmBrowser* opener)
{
    return addBrowser(opener, {}, opener != nullptr && opener->isPrivate());
}

frmBrowser* MDIForm1::addBrowser(frmBrowser* opener,
                                 const std::function<void(frmBrowser&)>& prepare, bool isPrivate)
{
    if (freeDescriptors() < descriptorsOfAWindow) {
        statusText(u"Kein neues Fenster: zu viele offene Dateien. Bitte Fenster schließen."_s);
        return nullptr;
    }
    const QPointer<frmBrowser> window = new frmBrowser(*this, m_parts.browser, isPrivate);
    window->StartingAddress(m_historyUrl.isEmpty() ? preferences().HomeUrl() : m_historyUrl);
    window->showAddressBar(preferences().Adresszeile() != 0);
    window->showToolbar(preferences().Toolbar() != 0);
    window->hideBars(!m_areBarsShown);
    m_area->addChild(window);
    m_activeChild->watch(*window);
    window->opener(opener);
    if (prepare)
        prepare(*window);
    frmBrowser* const active = activeBrowser();
    load(window, opener != nullptr && opener != active ? active : nullptr);

    m_windowNumber = addWhole(m_windowNumber, 1);
    m_counter = addWhole(m_counter, 1);
    // The page may have closed its window while it was loading.
    if (window.isNull() || window->isUnloaded())
        return nullptr;
    m_browser.Add(window, QString::number(m_windowNumber));
    window->windowKey(m_windowNumber);
    applyArrangement();
    emit browserAdded(*window);
    return window;
}

void MDIForm1::load(const QPointer<frmBrowser>& window, frmBrowser* front)
{
    // Shown, a window becomes the active one unless it is disabled.
    window->setEnabled(front == nullptr);
    window->load();
    if (window.isNull())
        return;
    window->setEnabled(true);
    window->PubResize();
    if (front != nullptr)
        window->stackUnder(front);
    else
        m_area->setActiveSubWindow(window);
}

void MDIForm1::ShowActiveChild()
{
    if (m_browser.IsEmpty() && !m_isOpenBook && !m_isOpenHistory)
        return;
    if (frmBrowser* active = activeBrowser())
        active->show();
}

frmBrowser* MDIForm1::activeBrowser() const
{
    return qobject_cast<frmBrowser*>(m_area->currentSubWindow());
}

void MDIForm1::applyArrangement()
{
    m_area->arrange(m_menus->checkedArrangement());
}

void MDIForm1::showStatusBar()
{
    statusBar()->setVisible(m_statusBarCurr && m_areBarsShown);
    m_menus->check(u"mn_Toggle"_s, m_statusBarCurr);
}

void MDIForm1::showBars(bool shown)
{
    m_areBarsShown = shown;
    m_menus->foldBar(!shown);
    showStatusBar();
    for (frmBrowser* window : m_browser)
        window->hideBars(!shown);
}

void MDIForm1::openAt(const QSize& size)
{
    m_bounded = {};
    resize(size);
    // The window manager's own decoration is not known before the frame is shown.
    stayOnScreen({0, style()->pixelMetric(QStyle::PM_TitleBarHeight)});
}

void MDIForm1::stayOnScreen(const QSize& decoration)
{
    const QSize room = screen()->availableSize() - decoration;
    if (height() > room.height())
        m_bounded.setHeight(room.height());
    if (width() > room.width())
        m_bounded.setWidth(room.width());
    resize(size().boundedTo(room));
}

void MDIForm1::bringToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void MDIForm1::restoreIfMinimized()
{
    if (!isMinimized())
        return;
    bringToFront();
    applyArrangement();
}

void MDIForm1::browserUnloaded(qint32 number)
{
    ignoringErrors([this] { m_counter = addWhole(m_counter, -1); });
    statusText({});
    ignoringErrors([&] {
        const frmBrowser& closing = *m_browser.Item(QString::number(number));
        replace(closing);
        if (!m_unloading)
            emit browserClosing(closing);
    });
    ignoringErrors([&] { m_browser.Remove(QString::number(number)); });
    m_sinceClosing.start();
}

void MDIForm1::replace(const frmBrowser& closing)
{
    if (!m_unloading)
        m_activeChild->replace(closing);
    // A window that was opened by the one that closes gives way to the opener of that one.
    for (frmBrowser* window : m_browser)
        if (window->opener() == &closing)
            window->opener(closing.opener());
}

ProposalSource& MDIForm1::proposals()
{
    return *m_knownPages;
}

void MDIForm1::SetDropDisabled(bool disable)
{
    m_area->acceptAddresses(!disable);
}

void MDIForm1::statusText(const QString& text)
{
    m_statusPanel->showText(text);
}

void MDIForm1::addStatusSign(QWidget* sign)
{
    statusBar()->addPermanentWidget(sign);
}

void MDIForm1::wouldLose(const QObject* who, const QString& what)
{
    const QString before = losses();
    if (what.isEmpty())
        m_losses.remove(who);
    else
        m_losses.insert(who, what);
    if (losses() != before)
        emit lossesChanged();
}

bool MDIForm1::event(QEvent* event)
{
    if (event->type() == QEvent::StatusTip)
        return true; // the status bar is for texts of pages
    if (event->type() == QEvent::WindowActivate)
        MDIForm_Activate();
    if (event->type() == QEvent::ContextMenu && activeBrowser() == nullptr &&
        static_cast<QContextMenuEvent*>(event)->reason() == QContextMenuEvent::Keyboard) {
        emit m_area->contextMenuWanted(m_area->mapToGlobal(m_area->rect().center()));
        return true;
    }
    return QMainWindow::event(event);
}

void MDIForm1::closeEvent(QCloseEvent* event)
{
    event->ignore();
    if (m_unloading)
        return;
    m_unloading = true;
    // Stored before the windows are asked, as the user may change the size while a question
    // keeps the frame open.
    storeSizeAndState();
    if (!std::all_of(m_endChecks.begin(), m_endChecks.end(),
                     [](const auto& mayEnd) { return mayEnd(); }) ||
        !closeFreeWindows()) {
        m_unloading = false;
        return;
    }
    // A copy: each takes itself out.
    const KeyedCollection<frmBrowser*> open = m_browser;
    for (frmBrowser* window : open)
        window->closeUnasked(); // the user has decided already
    MDIForm_Unload();
    event->accept();
    emit unloaded();
}

bool MDIForm1::closeFreeWindows()
{
    // The question of a window takes the focus from others, which may delete themselves then.
    QList<QPointer<QWidget>> children;
    for (QWidget* window : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        children.append(window);
    return std::all_of(children.begin(), children.end(), [](const QPointer<QWidget>& window) {
        return window.isNull() || !window->isWindow() || window->isHidden() || window->close();
    });
}

void MDIForm1::MDIForm_Unload()
{
    runCommand(*this, this, [this] { preferences().SavePref(); });
    m_history = {};
    m_browser = {};
}

void MDIForm1::storeSizeAndState()
{
    Prefer& stored = preferences();
    const qint16 state = isMinimized() ? 1 : isMaximized() ? 2 : 0;
    const QSize own = isFullScreen() ? normalGeometry().size() : size();
    if (state == 0 && own.height() != m_bounded.height())
        stored.MdiHeight(toStoredTwips(own.height()));
    if (state == 0 && own.width() != m_bounded.width())
        stored.MdiWidth(toStoredTwips(own.width()));
    stored.MdiState(state);
}
