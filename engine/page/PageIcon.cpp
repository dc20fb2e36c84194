#include "engine/page/PageIcon.h"

#include <chrono>

namespace {
constexpr std::chrono::milliseconds leastTime(1000);
} // namespace

PageIcon::PageIcon(QWebEnginePage& page) : QObject(&page), m_page(page)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &PageIcon::tell);
    connect(&page, &QWebEnginePage::iconChanged, this, &PageIcon::tellSoon);
    // After a download the engine has no icon left to take away from the next page.
    connect(&page, &QWebEnginePage::loadFinished, this, &PageIcon::tellSoon);
    connect(&page, &QWebEnginePage::loadStarted, this, [this] { m_before = commitShown(m_page); });
}

void PageIcon::tellSoon()
{
    // The engine takes the icon away when a load begins, and has the next one when it ends.
    const std::chrono::milliseconds untilAllowed(m_notBefore.remainingTime());
    const auto wait = m_page.icon().isNull() ? leastTime : untilAllowed;
    if (!m_timer.isActive() || m_timer.remainingTimeAsDuration() > wait)
        m_timer.start(wait);
}

void PageIcon::tell()
{
    const QIcon icon = m_page.icon();
    // A load that becomes a download leaves the page where it is, and the engine without the
    // icon. One that has shown nothing yet may still do so.
    if (icon.isNull() && m_page.iconUrl().isEmpty() && commitShown(m_page) == m_before) {
        if (m_page.isLoading())
            m_timer.start(leastTime);
        return;
    }
    m_notBefore.setRemainingTime(leastTime);
    emit changed(icon);
}
