#include "app/PaintPacer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QWidget>

namespace {

// A paint may take this long (ms) because it waits for the display's next refresh; no display
// is slower.
constexpr qint64 longestRefresh = 25;
// The picture changes at least this often (ms), however long a paint takes.
constexpr qint64 longestPause = 200;

} // namespace

int pauseAfterPaint(qint64 cost)
{
    return cost <= longestRefresh ? 0 : static_cast<int>(qMin(cost, longestPause));
}

PaintPacer::PaintPacer(QWidget* window) : QObject(window), m_window(window)
{
    m_pause.setSingleShot(true);
    m_pause.setTimerType(Qt::PreciseTimer);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isWanted)
            QCoreApplication::postEvent(m_window, new QEvent(QEvent::UpdateRequest),
                                        Qt::LowEventPriority);
    });
    window->installEventFilter(this);
}

bool PaintPacer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::UpdateRequest)
        return QObject::eventFilter(watched, event);
    m_isWanted = m_pause.isActive();
    if (m_isWanted)
        return true;
    QElapsedTimer clock;
    clock.start();
    watched->event(event);
    if (const int pause = pauseAfterPaint(clock.elapsed()); pause > 0)
        m_pause.start(pause);
    return true;
}
