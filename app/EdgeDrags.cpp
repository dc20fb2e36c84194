#include "app/EdgeDrags.h"

#include <QCoreApplication>
#include <QDropEvent>
#include <QWidget>
#include <QWindow>

#include <chrono>

namespace {
constexpr int edge = 24; // pixels
constexpr std::chrono::milliseconds untilResting(400);
} // namespace

EdgeDrags::EdgeDrags(QWidget& frame, std::function<QWidget*()> target)
    : QObject(&frame), m_frame(frame), m_target(std::move(target))
{
    m_resting.setSingleShot(true);
    m_resting.setInterval(untilResting);
    connect(&m_resting, &QTimer::timeout, this, &EdgeDrags::bringForward);
    // The widgets in the frame, the page above all, get the drags for themselves, and the frame's
    // own window is another one once the engine has drawn into it.
    QCoreApplication::instance()->installEventFilter(this);
}

bool EdgeDrags::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        if (watched == m_frame.windowHandle())
            dragged(static_cast<QDropEvent*>(event)->position().toPoint());
        break;
    case QEvent::DragLeave:
    case QEvent::Drop:
        if (watched == m_frame.windowHandle())
            m_resting.stop();
        break;
    default:
        break;
    }
    return false;
}

void EdgeDrags::dragged(const QPoint& place)
{
    if (m_frame.rect().adjusted(edge, edge, -edge, -edge).contains(place))
        m_resting.stop();
    else if (!m_resting.isActive())
        m_resting.start();
}

void EdgeDrags::bringForward()
{
    QWidget* const window = m_target();
    if (window != nullptr && window->isVisible() && !window->isMinimized())
        window->raise();
}
