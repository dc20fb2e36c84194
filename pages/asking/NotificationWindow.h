#pragma once

#include <QFrame>
#include <QList>

/// A notice in the corner of the screen that takes no focus and goes by itself
/// after a while. A click answers it and takes it away.
class NoticeWindow : public QFrame {
    Q_OBJECT
public:
    /// All texts are plain. It deletes itself.
    NoticeWindow(const QString& site, const QString& title, const QString& text);

    /// Shows it as low in its corner as the places of the `others` leave room.
    void appear(const QList<QRect>& others);

signals:
    void clicked();

protected:
    void mouseReleaseEvent(QMouseEvent* event) override;
};
