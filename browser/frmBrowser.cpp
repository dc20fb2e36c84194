#include "browser/frmBrowser.h"

#include "base/Errors.h"
#include "base/Prefer.h"
#include "base/SiteIcons.h"
#include "base/Twips.h"
#include "browser/AddressBar.h"
#include "browser/BrowserFocus.h"
#include "browser/BrowserFrame.h"
#include "browser/BrowserLayout.h"
#include "browser/BrowserToolbar.h"
#include "browser/BusyDisplay.h"
#include "browser/PageSafetyDisplay.h"
#include "browser/PageTexts.h"
#include "browser/SystemMenu.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QShortcut>
#include <QTimer>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
/// The size of a window that `twips` stand for, within what the toolkit can make.
int pixels(qint64 twips)
{
    return static_cast<int>(std::clamp<qint64>(twips / twipsPerPixel, 1, QWIDGETSIZE_MAX));
}
} // namespace

frmBrowser::frmBrowser(BrowserFrame& frame, const BrowserParts& parts, bool isPrivate)
    : m_frame(frame), m_isPrivate(isPrivate), m_drives(parts.drives),
      m_caption(*this, isPrivate ? frame.privateIcon() : frame.childIcon(), isPrivate)
{
    setObjectName(u"frmBrowser"_s);
    setAttribute(Qt::WA_DeleteOnClose);
    buildControls(parts);
    connectControls();
    connectEngine();
}

frmBrowser::~frmBrowser()
{
    // The engine and the focus must not report to a window that is half destroyed, while the
    // engine's widget is destroyed with the window's children.
    m_engine->disconnect(this);
    m_focus.reset();
}

void frmBrowser::buildControls(const BrowserParts& parts)
{
    m_client = new QWidget;
    m_toolbar = new BrowserToolbar(m_client);
    m_addressBar = new AddressBar(m_frame.proposals(), m_client);
    m_engine = (m_isPrivate ? parts.privateEngine : parts.engine)(m_client);
    m_engine->host()->setObjectName(u"brwWebBrowser"_s);
    m_engine->host()->setAccessibleName(u"Seite"_s);
    m_busy = new BusyDisplay(m_toolbar, this);
    setWidget(m_client);
    m_client->installEventFilter(this);
    m_systemMenu = std::make_unique<SystemMenu>(*this);
}

void frmBrowser::connectControls()
{
    connect(m_addressBar, &AddressBar::entered, this, &frmBrowser::NavigateToAddress);
    connect(m_toolbar, &BrowserToolbar::buttonClicked, this, &frmBrowser::clickButton);
    connect(m_toolbar, &BrowserToolbar::driveClicked, this, &frmBrowser::driveClicked);
    connect(m_busy, &BusyDisplay::tick, this, &frmBrowser::busyTick);
    m_focus = std::make_unique<BrowserFocus>(
        BrowserFocus::Places{*this, *m_client, *m_engine->host(), *m_addressBar, *m_toolbar});
    connect(m_systemMenu.get(), &SystemMenu::hintChanged, this,
            [this](const QString& hint) { m_frame.statusText(hint); });
    connect(m_systemMenu.get(), &SystemMenu::placed, m_focus.get(), &BrowserFocus::restore);
    auto* const safety = new PageSafetyDisplay(*m_engine, *m_addressBar, this);
    connect(safety, &PageSafetyDisplay::lineWanted, this, [this] {
        showAddressBar(true);
        PubResize();
    });
    connectEscape();
}

void frmBrowser::connectEscape()
{
    auto* escape = new QShortcut(Qt::Key_Escape, this);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    escape->setEnabled(false); // the key belongs to the page while nothing is busy
    connect(m_busy, &BusyDisplay::switched, escape, &QShortcut::setEnabled);
    connect(escape, &QShortcut::activated, this, [this] {
        if (m_systemMenu->isPlacing())
            m_systemMenu->cancelPlacing();
        else
            clickButton(u"Stop"_s);
    });
}

void frmBrowser::connectEngine()
{
    EngineControl* engine = m_engine.get();
    connect(engine, &EngineControl::StatusTextChange, this,
            [this](const QString& text) { m_frame.statusText(text); });
    connect(engine, &EngineControl::TitleChange, this,
            [this] { ignoringErrors([this] { m_frame.SetDropDisabled(false); }); });
    connect(engine, &EngineControl::BeforeNavigate2, this, &frmBrowser::StartBusy);
    connect(engine, &EngineControl::NewWindow2, this, &frmBrowser::newWindowRequested);
    connect(engine, &EngineControl::NavigateComplete2, this, &frmBrowser::navigateComplete);
    connect(engine, &EngineControl::WindowSetHeight, this, &frmBrowser::setWindowHeight);
    connect(engine, &EngineControl::WindowSetWidth, this, &frmBrowser::setWindowWidth);
    connect(engine, &EngineControl::SoundChange, this,
            [this](EngineControl::Sound sound) { m_caption.showSound(sound); });
    if (!m_isPrivate) // the icon of a private window is its mark
        connect(engine, &EngineControl::IconChange, this, &frmBrowser::showIcon);
    connect(engine, &EngineControl::WindowClosing, this, [this](bool, bool& cancel) {
        cancel = true;
        closeUnasked();
    });
}

bool frmBrowser::isAddressBarShown() const
{
    return m_isAddressBarShown;
}

void frmBrowser::showAddressBar(bool shown)
{
    m_isAddressBarShown = shown;
    m_addressBar->setVisible(shown && !m_areBarsHidden);
}

bool frmBrowser::isToolbarShown() const
{
    return m_isToolbarShown;
}

void frmBrowser::showToolbar(bool shown)
{
    m_isToolbarShown = shown;
    m_toolbar->setVisible(shown && !m_areBarsHidden);
}

void frmBrowser::hideBars(bool hidden)
{
    m_areBarsHidden = hidden;
    showAddressBar(m_isAddressBarShown);
    showToolbar(m_isToolbarShown);
    PubResize();
}

void frmBrowser::load()
{
    m_frame.bOpenNewWindow(false);
    ignoringErrors([this] { InitEngine(); });
    // An empty window waits for an address, any other one for its page.
    m_focus->settle(m_opener != nullptr || !StripQuotes(m_startingAddress).isEmpty());
    ignoringErrors([this] { show(); });
    ignoringErrors([this] { m_toolbar->fillDrives(m_drives()); });
    m_startingAddress = StripQuotes(m_startingAddress);
    if (m_waiting) {
        m_caption.say(*m_waiting);
        m_addressBar->announce(m_startingAddress);
    } else {
        begin();
    }
}

void frmBrowser::begin()
{
    const QByteArray pages = std::exchange(m_beginning, {});
    if (pages.isEmpty() && m_startingAddress.isEmpty())
        return;
    StartBusy();
    ignoringErrors([&] {
        if (pages.isEmpty() || !m_engine->RestorePages(pages))
            m_engine->Navigate(m_startingAddress);
    });
}

void frmBrowser::beginWhenSeen(const QString& title)
{
    m_waiting = title;
}

void frmBrowser::pageSeen(bool isSeen)
{
    m_isSeen = isSeen;
    m_engine->PageSeen(isSeen);
    // A window that is about to become active may be covered again at once.
    if (isSeen && m_waiting)
        QTimer::singleShot(0, this, [this] {
            if (m_isSeen && m_waiting)
                begin();
        });
}

QString frmBrowser::address() const
{
    QString current;
    ignoringErrors([&] { current = m_engine->LocationURL(); });
    return current.isEmpty() ? m_startingAddress : current;
}

QString frmBrowser::pageTitle() const
{
    return m_waiting ? *m_waiting : locationName();
}

QByteArray frmBrowser::pages() const
{
    QByteArray pages;
    ignoringErrors([&] { pages = m_engine->Pages(); });
    return pages;
}

void frmBrowser::InitEngine()
{
    ignoringErrors([this] { m_engine->Silent(false); });
    ignoringErrors([this] { m_engine->RegisterAsBrowser(false); });
    ignoringErrors([this] { m_engine->RegisterAsDropTarget(true); });
    ignoringErrors([this] { m_engine->Offline(false); });
}

void frmBrowser::NavigateToAddress(const QString& address, bool isTyped)
{
    if (m_updatingList)
        return;
    StartBusy();
    if (!m_engine->host()->isHidden()) {
        ignoringErrors([&] {
            if (isTyped)
                m_engine->NavigateTyped(address);
            else
                m_engine->Navigate(address);
        });
    }
    m_engine->host()->setFocus(); // the user reads on without reaching for the mouse
}

void frmBrowser::StartBusy()
{
    m_waiting.reset();
    m_busy->start();
}

void frmBrowser::clickButton(const QString& key)
{
    m_frame.bOpenNewWindow(false);
    if (key == "Back"_L1)
        navigationByButton([this] { m_engine->GoBack(); });
    else if (key == "Forward"_L1)
        navigationByButton([this] { m_engine->GoForward(); });
    else if (key == "Refresh"_L1)
        navigationByButton([this] { m_engine->Refresh(); });
    else if (key == "Home"_L1)
        navigationByButton([this] { m_engine->Navigate(m_frame.preferences().HomeUrl()); });
    else if (key == "Search"_L1)
        navigationByButton([this] { m_engine->Navigate(m_frame.preferences().SearchEngine()); });
    else if (key == "Stop"_L1)
        stopLoading();
}

void frmBrowser::refreshPastCache()
{
    m_frame.bOpenNewWindow(false);
    navigationByButton([this] { m_engine->RefreshPastCache(); });
}

void frmBrowser::navigationByButton(const std::function<void()>& step)
{
    m_frame.bOpenNewWindow(true);
    ignoringErrors(step);
}

void frmBrowser::stopLoading()
{
    m_busy->stop();
    ignoringErrors([this] { m_engine->Stop(); });
    if (const QString name = locationName(); !name.isEmpty())
        m_caption.say(name);
}

void frmBrowser::driveClicked(const QString& entry)
{
    m_frame.bOpenNewWindow(true);
    StartBusy();
    if (!m_engine->host()->isHidden())
        ignoringErrors([&] { m_engine->Navigate(entry.left(2)); });
}

void frmBrowser::busyTick()
{
    bool isBusy = false;
    ignoringErrors([&] { isBusy = m_engine->Busy(); });
    if (isBusy) {
        m_caption.say(u"In Bearbeitung..."_s);
        m_busy->advance();
        return;
    }
    m_busy->finish();
    m_addressBar->loadEnded();
    m_caption.say(locationName());
    if (const auto own = document(); own && !own->Title.isEmpty())
        m_caption.say(own->Title);
}

void frmBrowser::showIcon(const QIcon& given)
{
    QIcon icon = onTile(given);
    ignoringErrors([&] {
        const QString address = m_engine->LocationURL();
        m_frame.icons().remember(address, icon);
        // The engine has none for a page that was reopened with its pages back and forth (seen
        // with Qt 6.4.2).
        icon = m_frame.icons().icon(address);
    });
    m_caption.showIcon(icon);
}

QString frmBrowser::locationName() const
{
    QString name;
    ignoringErrors([&] { name = m_engine->LocationName(); });
    return name;
}

std::optional<EngineDocument> frmBrowser::document() const
{
    std::optional<EngineDocument> own;
    ignoringErrors([&] { own = m_engine->Document(); });
    return own;
}

void frmBrowser::newWindowRequested(EngineControl*& engine, bool& cancel)
{
    if (m_frame.bOpenNewWindow()) {
        cancel = true;
        m_frame.bOpenNewWindow(false);
        return;
    }
    m_frame.bNewSize(true);
    frmBrowser* window = nullptr;
    ignoringErrors([&] { window = m_frame.CreateBrowser(this); });
    if (window == nullptr)
        return;
    window->bNewWindow(true);
    engine = window->brwWebBrowser();
}

void frmBrowser::navigateComplete(const EngineFrame& frame, const QString& url)
{
    const QString name = locationName();
    const std::optional<EngineDocument> own = document();
    const QString frameCaption = captionOf(frame, own, name);
    m_caption.say(frameCaption);
    QString current;
    ignoringErrors([&] { current = m_engine->LocationURL(); });
    m_updatingList = true;
    ignoringErrors([&] { m_addressBar->visited(current); });
    const Visit visit = visitOf(frame, url, current, name);
    if (!m_isPrivate && isKept(visit.address))
        ignoringErrors([&] { m_frame.AddToHistory(visit.address, visit.title); });
    m_updatingList = false;
    // The frame is one that the page has added or changed after its load, and has given the
    // window its own title: the next tick gives the caption back to the page.
    if (!m_busy->isOn() && frameCaption != captionOf({own}, own, name))
        StartBusy();
    ignoringErrors([this] { PubResize(); });
    ignoringErrors([this] { m_frame.SetDropDisabled(false); });
    emit pageChanged();
}

bool frmBrowser::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_client && event->type() == QEvent::Resize)
        PubResize();
    return QMdiSubWindow::eventFilter(watched, event);
}

bool frmBrowser::event(QEvent* event)
{
    if (event->type() != QEvent::MouseMove && event->type() != QEvent::KeyPress)
        return QMdiSubWindow::event(event);
    const QRect before = geometry();
    const bool isHandled = QMdiSubWindow::event(event);
    if (geometry() != before && !isMaximized() && !isMinimized())
        emit placedByHand();
    return isHandled;
}

void frmBrowser::keyPressEvent(QKeyEvent* event)
{
    if (m_systemMenu->isPlacing())
        m_systemMenu->keyPressed(*event);
    else
        QMdiSubWindow::keyPressEvent(event);
}

int frmBrowser::barsHeight() const
{
    return bars().shownHeight();
}

BrowserBars frmBrowser::bars() const
{
    return {m_toolbar->sizeHint().height(), m_addressBar->panelHeight(), !m_toolbar->isHidden(),
            !m_addressBar->isHidden()};
}

void frmBrowser::PubResize()
{
    const BrowserBars present = bars();
    const BarPlaces places = placeBars(m_client->width(), present);
    m_toolbar->setGeometry(places.toolbar);
    m_addressBar->setGeometry(places.address);
    QWidget* page = m_engine->host();
    const auto layout =
        layOutBrowser(m_client->size(), m_addressBar->addressLeft(), page->y(), present);
    if (!layout)
        return;
    m_addressBar->addressWidth(layout->addressWidth);
    page->setGeometry(layout->engine);
}

void frmBrowser::setWindowHeight(int content)
{
    if (isMaximized() || isMinimized())
        return;
    const qint64 twips = windowHeightFor(content, toTwips(height()), m_client->height(), bars());
    sizeForPage({width(), pixels(twips)});
}

void frmBrowser::setWindowWidth(int content)
{
    if (isMaximized() || isMinimized())
        return;
    const qint64 twips = windowWidthFor(content, toTwips(width()), m_client->width());
    sizeForPage({pixels(twips), height()});
}

void frmBrowser::sizeForPage(const QSize& size)
{
    setGeometry(movedInside({pos(), size}, parentWidget()->size()));
}

void frmBrowser::closeUnasked()
{
    m_mayClose = true;
    close();
}

void frmBrowser::activated()
{
    refreshToolTips();
    m_focus->restore();
}

void frmBrowser::refreshToolTips()
{
    m_toolbar->update();
    m_toolbar->homeToolTip(m_frame.preferences().HomeUrl());
    m_toolbar->searchToolTip(m_frame.preferences().SearchEngine());
}

void frmBrowser::focusAddress()
{
    if (isMinimized())
        showNormal();
    if (!isAddressBarShown()) {
        showAddressBar(true);
        PubResize();
    }
    m_addressBar->focusAddress();
}

void frmBrowser::closeEvent(QCloseEvent* event)
{
    bool isAsking = false;
    if (!m_mayClose)
        ignoringErrors([&] { isAsking = m_engine->AskToClose(); });
    if (isAsking) {
        event->ignore();
        return;
    }
    unload();
    QMdiSubWindow::closeEvent(event);
}

void frmBrowser::unload()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    m_busy->stop();
    m_engine->disconnect(this);
    m_frame.browserUnloaded(m_windowKey);
}
