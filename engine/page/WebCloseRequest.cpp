#include "engine/page/WebCloseRequest.h"

#include "engine/page/WebEnginePage.h"

#include <QApplication>
#include <QWebEngineHistory>

namespace {

constexpr std::chrono::milliseconds tick(200);
/// How many ticks a page may take for its answer.
constexpr int mostTicks = 10;
/// For how long after the user's "stay" the engine may still close the page, as it has
/// decided before it heard the user; in milliseconds.
constexpr qint64 unheardStay = 500;

} // namespace

WebCloseRequest::WebCloseRequest(WebEnginePage& page) : m_page(page)
{
    m_ticks.setInterval(tick);
    connect(&m_ticks, &QTimer::timeout, this, &WebCloseRequest::wait);
    connect(&page, &WebEnginePage::leaveAsked, this, [this] {
        m_ticks.stop();
        if (m_isAsking)
            emit asking();
    });
    connect(&page, &WebEnginePage::leaveAnswered, this, [this](bool isLeaving) {
        m_isAsking = m_isAsking && isLeaving;
        if (m_isAsking)
            startWaiting();
        if (!isLeaving)
            m_sinceStay.start();
    });
    // While the question of another page holds it up, the engine decides to close the page
    // after a time of its own, lets the question appear all the same, and ignores its answer.
    connect(&page, &WebEnginePage::windowCloseRequested, this, [this] {
        if (!m_sinceStay.isValid() || m_sinceStay.hasExpired(unheardStay))
            emit closing();
    });
}

bool WebCloseRequest::begin()
{
    const bool isAlive = m_page.renderProcessPid() > 0 && m_page.history()->count() > 0;
    if (!isAlive || m_page.isAsking())
        return false;
    if (!m_isAsking) {
        m_isAsking = true;
        startWaiting();
        QTimer::singleShot(0, this, [this] { m_page.triggerAction(QWebEnginePage::RequestClose); });
    }
    return true;
}

void WebCloseRequest::startWaiting()
{
    m_waited = 0;
    m_ticks.start();
}

void WebCloseRequest::wait()
{
    // While the user answers the question of one page, no page can answer the engine.
    m_waited = QApplication::activeModalWidget() != nullptr ? 0 : m_waited + 1;
    if (m_waited >= mostTicks) {
        m_ticks.stop();
        emit closing();
    }
}
