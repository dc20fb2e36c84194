#include "engine/page/PageLeaving.h"

#include "engine/page/WebEnginePage.h"

#include <QTimer>

#include <utility>

PageLeaving::PageLeaving(WebEnginePage& page) : m_page(page)
{
    connect(&page, &WebEnginePage::endedByUser, this, &PageLeaving::goOnAfterEnd);
    connect(&page, &QWebEnginePage::loadFinished, this, [this] {
        if (!m_page.isLoading() && !m_isEnding)
            stop();
    });
    connect(&page, &QWebEnginePage::renderProcessTerminated, this, [this] {
        if (std::exchange(m_isEnding, false))
            QTimer::singleShot(0, this, m_step);
    });
}

void PageLeaving::by(const std::function<void()>& step)
{
    m_step = step;
    m_left = commitShown(m_page);
    emit m_page.userLeaves(); // may end the page
    if (!m_isEnding)
        step();
}

void PageLeaving::goOnAfterEnd()
{
    m_isEnding = m_step && m_left == commitShown(m_page);
}
