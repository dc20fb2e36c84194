#include "engine/page/WebEngineControl.h"

#include "base/Errors.h"
#include "browser/PageTexts.h"
#include "engine/page/PageIcon.h"
#include "engine/page/PageStatus.h"
#include "engine/page/WebEnginePage.h"
#include "engine/page/WebErrorPage.h"
#include "pages/asking/PromptSession.h"
#include "pages/asking/UrlSchemes.h"

#include <QAccessible>
#include <QDataStream>
#include <QDeadlineTimer>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTimer>
#include <QWebEngineHistory>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// How long a navigation counts as pending in the engine. Scripts and addresses of other
/// programs never make it load anything.
constexpr std::chrono::seconds longestPending(3);

const QUrl blank(u"about:blank"_s);

bool isPage(const QUrl& url)
{
    return url.isValid() && isForEngine(url) && !isForDesktop(url) && !isScript(url);
}

/// Makes the browser window that `widget` is in the active one of the frame.
void activateWindowOf(QWidget* widget)
{
    for (; widget != nullptr; widget = widget->parentWidget()) {
        auto* const window = qobject_cast<QMdiSubWindow*>(widget);
        if (window == nullptr || window->mdiArea() == nullptr)
            continue;
        if (window->isMinimized())
            window->showNormal();
        window->mdiArea()->setActiveSubWindow(window);
    }
}

/// What the browser window knows as the page; the view in it comes and goes.
class PageHost : public QWidget {
public:
    using QWidget::QWidget;
    void hold(QWebEngineView* view)
    {
        m_view = view;
        setFocusProxy(view);
    }

protected:
    void resizeEvent(QResizeEvent* /*event*/) override
    {
        if (m_view)
            m_view->resize(size());
    }

private:
    QPointer<QWebEngineView> m_view;
};

} // namespace

WebEngineControl::WebEngineControl(QWidget* parent, WebEnginePage* page, Resolvers resolve,
                                   PromptSession& session, std::chrono::milliseconds sleepAfter)
    : m_page(page), m_resolve(std::move(resolve.address)), m_search(std::move(resolve.search)),
      m_visits([this](const EngineFrame& frame, const QString& address) {
          emit NavigateComplete2(frame, address);
      }),
      m_popups(session.popups), m_closeRequest(*page), m_leaving(*page), m_sleep(*page, sleepAfter),
      m_safety(*page, session)
{
    auto* const host = new PageHost(parent);
    m_host = host;
    m_view = new QWebEngineView(host);
    host->hold(m_view);
    m_view->setPage(m_page);
    // QMdiSubWindow gives the focus only to what can get it by the Tab key.
    m_view->setFocusPolicy(Qt::StrongFocus);
    connectLoading();
    connectWindow();
}

WebEngineControl::~WebEngineControl()
{
    if (!m_page) // deleted by its parent, at the program's end
        return;
    if (m_view) { // like the page, the view must not be deleted while the engine works in it
        m_view->hide();
        m_view->setParent(nullptr);
        connect(m_page.get(), &QObject::destroyed, m_page->profile(),
                [view = m_view] { delete view.get(); });
    }
    m_page->disconnect(this);
    m_page->retire();
}

void WebEngineControl::connectLoading()
{
    connect(m_page, &QWebEnginePage::loadStarted, this, [this] {
        if (m_pending == Pending::InEngine)
            m_pending = Pending::Nothing;
        const QPointer<WebEngineControl> self = this;
        m_status->clear();
        if (!self)
            return;
        m_visits.loadStarted(pageState());
        emit DownloadBegin();
    });
    connect(m_page, &QWebEnginePage::loadFinished, this, [this] {
        const WebPageState page = pageState();
        const QPointer<WebEngineControl> self = this;
        m_visits.loadFinished(page);
        if (self)
            emit DownloadComplete();
    });
    connect(m_page, &QWebEnginePage::urlChanged, this,
            [this] { m_visits.urlChanged(pageState()); });
    connect(m_page, &QWebEnginePage::titleChanged, this, [this](const QString& title) {
        m_visits.titleChanged(pageState());
        const QPointer<WebEngineControl> self = this;
        emit TitleChange(title);
        if (self)
            announceWriting(title);
    });
    connect(m_page, &WebEnginePage::frameReported, this, [this](const FrameReport& report) {
        if (const QUrl url(report.address); report.isMainFrame && WebErrorPage::isAt(url))
            m_errorPage = url;
        m_visits.reported(report, pageState());
    });
    connect(m_page, &WebEnginePage::leaveAnswered, this, [this](bool isLeaving) {
        if (!isLeaving)
            m_pending = Pending::Nothing;
    });
    connect(m_page, &WebEnginePage::navigationStarting, this,
            &WebEngineControl::announceNavigation);
}

void WebEngineControl::connectWindow()
{
    m_status = std::make_unique<PageStatus>(*m_page, *m_view);
    connect(m_status.get(), &PageStatus::changed, this, &WebEngineControl::StatusTextChange);
    connect(&m_safety, &WebSafety::changed, this, &WebEngineControl::SafetyChange);
    connect(&m_closeRequest, &WebCloseRequest::asking, this, [this] { activateWindowOf(m_view); });
    connect(&m_closeRequest, &WebCloseRequest::closing, this, &WebEngineControl::closeWindow);
    connect(m_page, &QWebEnginePage::recentlyAudibleChanged, this,
            &WebEngineControl::announceSound);
    connect(m_page, &QWebEnginePage::audioMutedChanged, this, &WebEngineControl::announceSound);
    connect(new PageIcon(*m_page), &PageIcon::changed, this, &WebEngineControl::IconChange);
    connect(m_page, &QWebEnginePage::newWindowRequested, this, &WebEngineControl::openWindow);
    connect(m_page, &QWebEnginePage::geometryChangeRequested, this,
            &WebEngineControl::resizeWindow);
    connect(m_page, &WebEnginePage::downloadDecided, this,
            [this] { QTimer::singleShot(0, this, &WebEngineControl::closeIfEmpty); });
}

void WebEngineControl::announceSound()
{
    emit SoundChange(m_page->isAudioMuted()      ? Sound::Silenced
                     : m_page->recentlyAudible() ? Sound::Playing
                                                 : Sound::None);
}

bool WebEngineControl::begin(const QString& typed)
{
    QUrl url;
    ignoringErrors([&] { url = m_resolve(typed); });
    if (!isPage(url))
        return false;
    m_begun = typed;
    handOver(typed, false);
    return true;
}

void WebEngineControl::Navigate(const QString& url)
{
    navigate(url, false);
}

void WebEngineControl::NavigateTyped(const QString& url)
{
    navigate(url, true);
}

void WebEngineControl::navigate(const QString& typed, bool mayBeScript)
{
    if (const QString begun = std::exchange(m_begun, {}); !begun.isEmpty() && begun == typed)
        return;
    m_pending = Pending::InEventLoop;
    QTimer::singleShot(0, this, [this, typed, mayBeScript, number = ++m_navigations] {
        // Meanwhile it may have been stopped, or another navigation taken its place.
        if (m_pending == Pending::InEventLoop && number == m_navigations)
            handOver(typed, mayBeScript);
    });
}

void WebEngineControl::beginPending()
{
    m_pending = Pending::InEngine;
    emit m_page->userNavigates();
    QTimer::singleShot(longestPending, this, [this, number = m_navigations] {
        if (number == m_navigations)
            m_pending = Pending::Nothing;
    });
}

void WebEngineControl::handOver(const QString& typed, bool mayBeScript)
{
    beginPending();
    QUrl url;
    ignoringErrors([&] { url = m_resolve(typed); });
    if (isForDesktop(url)) {
        m_pending = Pending::Nothing;
        emit m_page->desktopAddressWanted(url, true);
    } else if (isScript(url) && mayBeScript) {
        m_page->load(url);
    } else if (isPage(url)) {
        m_leaving.by([this, url] { m_page->load(url); });
    } else {
        m_noAddress = typed;
        m_leaving.by([this, typed] {
            m_page->setHtml(WebErrorPage::html(typed, m_search(typed)), WebErrorPage::url(typed));
        });
    }
}

void WebEngineControl::GoBack()
{
    actLater(QWebEnginePage::Back);
}

void WebEngineControl::GoForward()
{
    actLater(QWebEnginePage::Forward);
}

void WebEngineControl::Refresh()
{
    reloadLater(QWebEnginePage::Reload);
}

void WebEngineControl::RefreshPastCache()
{
    reloadLater(QWebEnginePage::ReloadAndBypassCache);
}

void WebEngineControl::reloadLater(QWebEnginePage::WebAction action)
{
    QTimer::singleShot(
        0, this, [this, action] { m_leaving.by([this, action] { m_page->reload(action); }); });
}

void WebEngineControl::Stop()
{
    m_pending = Pending::Nothing;
    m_leaving.stop();
    QTimer::singleShot(0, this, [this] {
        emit m_page->userNavigates();
        m_page->triggerAction(QWebEnginePage::Stop);
    });
}

void WebEngineControl::actLater(QWebEnginePage::WebAction action)
{
    QTimer::singleShot(0, this, [this, action] {
        emit m_page->userNavigates();
        const QWebEngineHistory& history = *m_page->history();
        if (action == QWebEnginePage::Back ? history.canGoBack() : history.canGoForward())
            m_leaving.by([this, action] { m_page->triggerAction(action); });
    });
}

bool WebEngineControl::AskToClose()
{
    if (!m_page)
        return false;
    m_sleep.wake(); // asleep it could not ask
    return m_closeRequest.begin();
}

bool WebEngineControl::Busy() const
{
    // While the page has the user asked something, be it whether to leave it, a navigation
    // may wait for the answer.
    return m_pending != Pending::Nothing || m_page->isLoading() || m_page->isAsking();
}

QString WebEngineControl::LocationURL() const
{
    return shownAddress(pageState());
}

QString WebEngineControl::LocationName() const
{
    return m_page->title();
}

std::optional<EngineDocument> WebEngineControl::Document() const
{
    return m_visits.document();
}

QByteArray WebEngineControl::Pages() const
{
    QByteArray pages;
    if (m_page && m_page->history()->count() > 0) {
        QDataStream stream(&pages, QIODevice::WriteOnly);
        stream << *m_page->history();
    }
    return pages;
}

bool WebEngineControl::RestorePages(const QByteArray& pages)
{
    m_pending = Pending::InEventLoop;
    QTimer::singleShot(0, this, [this, pages, number = ++m_navigations] {
        if (m_pending != Pending::InEventLoop || number != m_navigations)
            return;
        beginPending();
        QDataStream stream(pages);
        stream >> *m_page->history();
    });
    return true;
}

void WebEngineControl::RegisterAsDropTarget(bool value)
{
    EngineControl::RegisterAsDropTarget(value);
    if (m_view)
        m_view->setAcceptDrops(value);
}

QWidget* WebEngineControl::host()
{
    return m_host;
}

void WebEngineControl::PageSeen(bool isSeen)
{
    if (!m_view || !m_page)
        return;
    // Assistive tools find nothing in a view that is hidden. A view whose window hides it needs
    // no hiding, and could not be given the focus when that window comes back.
    const bool isShown = isSeen || QAccessible::isActive();
    if (isShown)
        m_view->show();
    else if (m_view->isVisible())
        m_view->hide();
    m_sleep.seen(isShown);
}

QWebEngineView* WebEngineControl::view() const
{
    return m_view;
}

WebPageState WebEngineControl::pageState() const
{
    if (!m_page)
        return {};
    const WebCommit commit = commitShown(*m_page);
    QUrl url = m_page->url();
    // A document may report itself before the page's address has followed it (seen with
    // Qt 6.8).
    const bool isErrorPage = WebErrorPage::isContent(commit.url);
    const bool isBehind = isErrorPage != WebErrorPage::isAt(url) || url.isEmpty();
    if (isBehind && !commit.url.isEmpty() && commit.url.scheme() != "about"_L1)
        url = isErrorPage ? m_errorPage : commit.url;
    return {url, m_page->title(), commit};
}

void WebEngineControl::announceNavigation(const QUrl& url, bool isMainFrame)
{
    if (isMainFrame) {
        // The engine does not report the begin of a load while another one is still running.
        if (m_pending == Pending::InEngine && m_page->isLoading())
            m_pending = Pending::Nothing;
        m_visits.navigationStarting(url, pageState());
    }
    // The engine announces a page of our own making by its content.
    const bool isErrorPage = isMainFrame && WebErrorPage::isContent(url);
    emit BeforeNavigate2(isErrorPage ? m_noAddress : WebErrorPage::shownAddress(url));
}

void WebEngineControl::announceWriting(const QString& title)
{
    // When a page writes into a window that it has opened, the new title comes when nothing
    // is loading any more, and nothing else tells that a document has come.
    const QUrl url = m_page->url();
    if (!title.isEmpty() && (url.isEmpty() || url == blank))
        emit BeforeNavigate2(blank.toString());
}

bool WebEngineControl::mayOpenWindow(QWebEngineNewWindowRequest& request)
{
    if (isForDesktop(request.requestedUrl())) {
        if (request.isUserInitiated())
            emit m_page->desktopAddressWanted(request.requestedUrl(), false);
        return false;
    }
    if (isForNobody(request.requestedUrl())) {
        emit m_page->navigationBarred(request.requestedUrl());
        return false;
    }
    const std::chrono::milliseconds now(QDeadlineTimer::current().deadline());
    const bool mayOpen = m_popups.mayOpen(now, request.isUserInitiated());
    if (!mayOpen)
        m_status->notify(u"Ein weiteres Fenster dieser Seite wurde nicht geöffnet."_s);
    return mayOpen;
}

void WebEngineControl::openWindow(QWebEngineNewWindowRequest& request)
{
    if (!mayOpenWindow(request))
        return;
    EngineControl* engine = nullptr;
    bool cancel = false;
    emit NewWindow2(engine, cancel);
    auto* const other = qobject_cast<WebEngineControl*>(engine);
    if (!cancel && other != nullptr)
        other->openHere(request);
}

void WebEngineControl::openHere(QWebEngineNewWindowRequest& request)
{
    m_pending = Pending::Nothing; // the page requested comes in place of the start address
    m_isOpenedByPage = true;
    // A window that a page opens and writes into never navigates, so that the engine never
    // works out its preferences, and crashes at its first paint (seen with Qt 6.4). A page
    // that has begun a load of its own has some, and a setting that is set once more hands
    // them over to the window. Without the blank page and the setting, a page that opens a
    // window and writes into it must work before they can go.
    const QPointer<WebEnginePage> page = m_page;
    page->load(blank);
    request.openIn(page); // sends events: this object may be gone after it
    page->settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, true);
}

void WebEngineControl::resizeWindow(const QRect& geometry)
{
    if (m_view && geometry.size() == m_view->size()) // the page only wants to be moved
        return;
    const QPointer<WebEngineControl> self = this;
    emit WindowSetHeight(geometry.height());
    if (self)
        emit WindowSetWidth(geometry.width());
}

void WebEngineControl::closeWindow()
{
    const QPointer<WebEngineControl> self = this;
    bool cancel = false;
    emit WindowClosing(m_isOpenedByPage, cancel);
    if (self && !cancel && m_host)
        m_host->hide();
}

void WebEngineControl::closeIfEmpty()
{
    // A page has opened the window for the download's sake only. If it was written into
    // instead, it has a document although it never went anywhere.
    if (m_isOpenedByPage && !m_visits.document() && pageState().commit.position < 0)
        closeWindow();
}
