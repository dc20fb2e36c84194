#pragma once

#include <QFrame>
#include <QList>

/// The notification of a site, in the corner of the screen. It takes no focus and goes by
/// itself after a while; a click tells the site and takes it away.
class NotificationWindow : public QFrame {
    Q_OBJECT
public:
    /// All texts are plain. It deletes itself.
    NotificationWindow(const QString& site, const QString& title, const QString& text);

    /// Shows it as low in its corner as the places of the `others` leave room.
    void appear(const QList<QRect>& others);

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
};
