#include "browser/BusyDisplay.h"

#include "browser/BrowserToolbar.h"

#include <QProgressBar>

BusyDisplay::BusyDisplay(BrowserToolbar* toolbar, QObject* parent)
    : QObject(parent), m_toolbar(toolbar), m_timer(this)
{
    m_timer.setObjectName(QStringLiteral("timTimer"));
    m_timer.setInterval(300);
    connect(&m_timer, &QTimer::timeout, this, &BusyDisplay::tick);
}

void BusyDisplay::start()
{
    QProgressBar* bar = m_toolbar->progressBar();
    bar->setValue(bar->minimum());
    m_toolbar->showBusy(true);
    m_progressStep = 0;
    m_timer.start();
    emit switched(true);
}

void BusyDisplay::stop()
{
    m_timer.stop();
    QProgressBar* bar = m_toolbar->progressBar();
    bar->setValue(bar->minimum());
    m_toolbar->showBusy(false);
    emit switched(false);
}

void BusyDisplay::advance()
{
    QProgressBar* bar = m_toolbar->progressBar();
    bar->setValue(m_progressStep);
    m_progressStep = bar->maximum() > m_progressStep ? static_cast<quint8>(m_progressStep + 1) : 0;
}
