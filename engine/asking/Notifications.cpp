#include "engine/asking/Notifications.h"

#include "pages/asking/NotificationWindow.h"
#include "pages/asking/SiteText.h"

#include <QWebEngineNotification>
#include <QWebEngineProfile>

namespace {

constexpr int mostAtATime = 4;

} // namespace

Notices::Notices(QWebEngineProfile& profile, QObject* parent) : QObject(parent), m_profile(profile)
{
    profile.setNotificationPresenter([this](std::unique_ptr<QWebEngineNotification> notification) {
        show(std::move(notification));
    });
}

Notices::~Notices()
{
    m_profile.setNotificationPresenter({});
    qDeleteAll(m_windows);
}

void Notices::show(std::unique_ptr<QWebEngineNotification> notification)
{
    m_windows.removeIf([](const QPointer<NoticeWindow>& window) { return !window; });
    if (m_windows.size() >= mostAtATime)
        delete m_windows.takeFirst();
    auto* const window =
        new NoticeWindow(siteName(notification->origin()), cleanLine(notification->title()),
                         cleanLine(notification->message(), 300));
    auto* const shown = notification.release();
    shown->setParent(window);
    connect(window, &NoticeWindow::clicked, shown, &QWebEngineNotification::click);
    connect(shown, &QWebEngineNotification::closed, window, &QWidget::close);
    shown->show();
    QList<QRect> places;
    for (const auto& other : m_windows)
        places.append(other->geometry());
    window->appear(places);
    m_windows.append(window);
}
