#include "engine/asking/Notifications.h"

#include "engine/asking/DesktopNotification.h"
#include "engine/page/SessionBus.h"
#include "pages/asking/NotificationWindow.h"
#include "pages/asking/SiteText.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <QWebEngineNotification>
#include <QWebEngineProfile>
#include <QWebEngineView>

namespace {

constexpr int mostAtATime = 4;
/// The desktop may keep those that it does not show any more in a list.
constexpr int mostByDesktop = 20;
constexpr qsizetype longestText = 300;

} // namespace

Notifications::Notifications(QWebEngineProfile& profile, QWidget& frame, QObject* parent)
    : QObject(parent), m_profile(profile), m_frame(frame)
{
    profile.setNotificationPresenter([this](std::unique_ptr<QWebEngineNotification> notification) {
        show(std::move(notification));
    });
}

Notifications::~Notifications()
{
    m_profile.setNotificationPresenter({});
    qDeleteAll(m_windows);
    for (const auto& desktop : m_byDesktop)
        if (desktop)
            desktop->withdraw();
}

void Notifications::show(std::unique_ptr<QWebEngineNotification> notification)
{
    auto* const shown = notification.release();
    const auto bus = m_profile.isOffTheRecord() ? std::nullopt : sessionBus();
    if (!bus) {
        showInCorner(shown);
        return;
    }
    const DesktopNotification::Content content{siteName(shown->origin()), cleanLine(shown->title()),
                                               cleanLine(shown->message(), longestText),
                                               shown->icon()};
    showByDesktop(shown, new DesktopNotification(*bus, content, this));
}

void Notifications::showByDesktop(QWebEngineNotification* shown, DesktopNotification* desktop)
{
    m_byDesktop.removeIf([](const QPointer<DesktopNotification>& other) { return !other; });
    // One with the tag of another takes its place.
    for (const auto& other : m_byDesktop)
        if (shown->matches(other->findChild<QWebEngineNotification*>()))
            other->withdraw();
    if (m_byDesktop.size() >= mostByDesktop)
        m_byDesktop.takeFirst()->withdraw();
    m_byDesktop.append(desktop);
    shown->setParent(desktop);
    connect(desktop, &DesktopNotification::shown, shown, &QWebEngineNotification::show);
    connect(desktop, &DesktopNotification::clicked, this, [this, shown] {
        activateWindowOf(*shown);
        shown->click();
    });
    connect(desktop, &DesktopNotification::closed, shown, [shown, desktop] {
        shown->close();
        desktop->deleteLater();
    });
    connect(shown, &QWebEngineNotification::closed, desktop, &DesktopNotification::withdraw);
    connect(desktop, &DesktopNotification::refused, this, [this, shown, desktop] {
        disconnect(shown, nullptr, desktop, nullptr);
        showInCorner(shown);
        desktop->deleteLater();
    });
}

void Notifications::showInCorner(QWebEngineNotification* shown)
{
    m_windows.removeIf([](const QPointer<NotificationWindow>& window) { return !window; });
    if (m_windows.size() >= mostAtATime)
        delete m_windows.takeFirst();
    auto* const window =
        new NotificationWindow(siteName(shown->origin()), cleanLine(shown->title()),
                               cleanLine(shown->message(), longestText));
    shown->setParent(window);
    connect(window, &NotificationWindow::clicked, shown, [this, shown] {
        activateWindowOf(*shown);
        shown->click();
    });
    connect(shown, &QWebEngineNotification::closed, window, &QWidget::close);
    shown->show();
    QList<QRect> places;
    for (const auto& other : m_windows)
        places.append(other->geometry());
    window->appear(places);
    m_windows.append(window);
}

void Notifications::activateWindowOf(const QWebEngineNotification& notification)
{
    QList<QMdiSubWindow*> windows;
    for (QMdiSubWindow* window : m_frame.findChildren<QMdiSubWindow*>())
        for (const auto* view : window->findChildren<QWebEngineView*>())
            if (view->page()->profile() == &m_profile &&
                siteName(view->url()) == siteName(notification.origin()))
                windows.append(window);
    m_frame.setWindowState(m_frame.windowState() & ~Qt::WindowMinimized);
    m_frame.raise();
    m_frame.activateWindow();
    // Of several windows the page may know which, and takes the focus there.
    if (windows.size() != 1)
        return;
    if (windows.first()->isMinimized())
        windows.first()->showNormal();
    windows.first()->mdiArea()->setActiveSubWindow(windows.first());
}
