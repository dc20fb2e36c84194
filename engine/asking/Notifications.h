#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

#include <memory>

class NotificationWindow;
class QWebEngineNotification;
class QWebEngineProfile;

/// Shows the notifications of the sites that may send some, a few at a time.
class Notifications : public QObject {
    Q_OBJECT
public:
    /// It goes before `profile`.
    Notifications(QWebEngineProfile& profile, QObject* parent);
    ~Notifications() override;
    Q_DISABLE_COPY_MOVE(Notifications)

private:
    void show(std::unique_ptr<QWebEngineNotification> notification);

    QWebEngineProfile& m_profile;
    QList<QPointer<NotificationWindow>> m_windows;
};
