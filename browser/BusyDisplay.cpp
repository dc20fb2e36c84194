#include "browser/BusyDisplay.h"

#include "browser/BrowserToolbar.h"

#include <QDeadlineTimer>
#include <QProgressBar>

namespace {

constexpr int beat = 300; // milliseconds

/// All windows keep one beat: each paint composes the whole frame with all its
/// pages, and windows that tick together share it.
int untilNextBeat()
{
    const QDeadlineTimer now = QDeadlineTimer::current(Qt::PreciseTimer);
    return beat - static_cast<int>(now.deadline() % beat);
}

} // namespace

BusyDisplay::BusyDisplay(BrowserToolbar* toolbar, QObject* parent)
    : QObject(parent), m_toolbar(toolbar), m_timer(this)
{
    m_timer.setObjectName(QStringLiteral("timTimer"));
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        m_timer.setInterval(beat);
        emit tick();
    });
}

void BusyDisplay::start()
{
    showStep(0);
    m_toolbar->showBusy(true);
    m_progressStep = 0;
    if (!m_timer.isActive())
        m_timer.start(untilNextBeat());
    emit switched(true);
}

void BusyDisplay::finish()
{
    showStep(0);
    stop();
}

void BusyDisplay::stop()
{
    m_timer.stop();
    m_toolbar->showBusy(false);
    emit switched(false);
}

void BusyDisplay::advance()
{
    showStep(m_progressStep);
    const int last = m_toolbar->progressBar()->maximum();
    m_progressStep = last > m_progressStep ? static_cast<quint8>(m_progressStep + 1) : 0;
}

// The bar paints itself at once when its value is set, and each time the whole
// frame is composed anew with all its pages. A request to paint costs that once
// for all windows.
void BusyDisplay::showStep(int step)
{
    QProgressBar* bar = m_toolbar->progressBar();
    if (bar->value() == bar->minimum() + step)
        return;
    bar->setUpdatesEnabled(false);
    bar->setValue(bar->minimum() + step);
    bar->setUpdatesEnabled(true);
}
