#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

#include <memory>

class DesktopNotification;
class NotificationWindow;
class QWebEngineNotification;
class QWebEngineProfile;
class QWidget;

/// Shows the notifications of the sites that may send some: by the desktop's own service where
/// there is one, else in a corner of the screen, a few at a time. What private windows get stays
/// in that corner, as the desktop may keep a list.
class Notifications : public QObject {
    Q_OBJECT
public:
    /// Both outlive it. `frame` holds the windows of the pages.
    Notifications(QWebEngineProfile& profile, QWidget& frame, QObject* parent);
    ~Notifications() override;
    Q_DISABLE_COPY_MOVE(Notifications)

private:
    void show(std::unique_ptr<QWebEngineNotification> notification);
    void showByDesktop(QWebEngineNotification* shown, DesktopNotification* desktop);
    void showInCorner(QWebEngineNotification* shown);
    /// Brings the frame to the front, with the window of the site in it if it is the only one.
    void activateWindowOf(const QWebEngineNotification& notification);

    QWebEngineProfile& m_profile;
    QWidget& m_frame;
    QList<QPointer<NotificationWindow>> m_windows;
    QList<QPointer<DesktopNotification>> m_byDesktop;
};
