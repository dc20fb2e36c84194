#pragma once

#include <QObject>
#include <QTimer>

#include <functional>

class QWidget;

/// Brings the window for which something is dragged forward, when it lies behind the frame: as
/// soon as the drag rests at an edge of the frame.
class EdgeDrags : public QObject {
    Q_OBJECT
public:
    /// Belongs to `frame`. `target` gives the window to bring forward, null for none.
    EdgeDrags(QWidget& frame, std::function<QWidget*()> target);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void dragged(const QPoint& place);
    void bringForward();

    QWidget& m_frame;
    std::function<QWidget*()> m_target;
    QTimer m_resting;
};
