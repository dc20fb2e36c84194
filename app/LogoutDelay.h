#pragma once

#include <QDBusObjectPath>
#include <QObject>

class QDBusConnection;

/// Has the desktop tell the user, when he logs out, what would be lost, and let him stay: by the
/// portal of desktops (`org.freedesktop.portal.Inhibit`). Where there is no bus or no portal,
/// nothing happens. Nothing waits for an answer.
class LogoutDelay : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// What would be lost, for the user; empty: he may log out unasked.
    void setReason(const QString& reason);

private:
    void follow();
    void hold(const QDBusConnection& bus);

    QString m_reason;
    /// What the portal was told last.
    QString m_told;
    /// What the portal made of it; it ends when this is closed, or the program ends.
    QDBusObjectPath m_request;
    bool m_isWaiting = false;
};
