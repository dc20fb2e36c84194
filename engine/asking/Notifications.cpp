#include "engine/asking/Notifications.h"

#include "pages/asking/NotificationWindow.h"
#include "pages/asking/SiteText.h"

#include <QWebEngineNotification>
#include <QWebEngineProfile>

namespace {

constexpr int mostAtATime = 4;

} // namespace

Notifications::Notifications(QWebEngineProfile& profile, QObject* parent)
    : QObject(parent), m_profile(profile)
{
    profile.setNotificationPresenter([this](std::unique_ptr<QWebEngineNotification> notification) {
        show(std::move(notification));
    });
}

Notifications::~Notifications()
{
    m_profile.setNotificationPresenter({});
    qDeleteAll(m_windows);
}

void Notifications::show(std::unique_ptr<QWebEngineNotification> notification)
{
    m_windows.removeIf([](const QPointer<NotificationWindow>& window) { return !window; });
    if (m_windows.size() >= mostAtATime)
        delete m_windows.takeFirst();
    auto* const window =
        new NotificationWindow(siteName(notification->origin()), cleanLine(notification->title()),
                               cleanLine(notification->message(), 300));
    auto* const shown = notification.release();
    shown->setParent(window);
    connect(window, &NotificationWindow::clicked, shown, &QWebEngineNotification::click);
    connect(shown, &QWebEngineNotification::closed, window, &QWidget::close);
    shown->show();
    QList<QRect> places;
    for (const auto& other : m_windows)
        places.append(other->geometry());
    window->appear(places);
    m_windows.append(window);
}
