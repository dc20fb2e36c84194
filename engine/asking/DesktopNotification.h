#pragma once

#include <QDBusConnection>
#include <QImage>
#include <QObject>

/// The notification of a site, as the desktop's own service (`org.freedesktop.Notifications`)
/// shows it. Nothing waits for an answer.
class DesktopNotification : public QObject {
    Q_OBJECT
public:
    /// What the user is shown, in plain texts that have been cleaned.
    struct Content {
        QString site;
        QString title;
        QString text;
        QImage icon;
    };

    DesktopNotification(const QDBusConnection& bus, const Content& content, QObject* parent);

    /// Takes it away, as soon as the service has it. It deletes itself then.
    void withdraw();

signals:
    void shown();
    void clicked();
    /// The user, or the service, has taken it away.
    void closed();
    /// There is no service, or it does not answer. Nothing else comes after that.
    void refused();

private slots:
    void handleToken(uint id, const QString& token) const;
    void handleAction(uint id, const QString& action);
    void handleClosed(uint id, uint reason);

private:
    void send(const QStringList& capabilities);
    void taken(uint id);

    QDBusConnection m_bus;
    Content m_content;
    /// The service's number for it; 0 until it is shown.
    uint m_id = 0;
    bool m_isWithdrawn = false;
};
