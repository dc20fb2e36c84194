#include "engine/page/WebCloseRequest.h"

#include "engine/page/WebEnginePage.h"

#include <QApplication>
#include <QWebEngineHistory>

namespace {

constexpr std::chrono::milliseconds tick(200);
/// How many ticks a page may take for its answer.
constexpr int patience = 10;
/// What the engine has decided before it heard the user comes that soon, in milliseconds.
constexpr qint64 late = 500;

} // namespace

WebCloseRequest::WebCloseRequest(WebEnginePage& page) : m_page(page)
{
    m_patience.setInterval(tick);
    connect(&m_patience, &QTimer::timeout, this, &WebCloseRequest::wait);
    connect(&page, &WebEnginePage::leaveAsked, this, [this] { m_patience.stop(); });
    connect(&page, &WebEnginePage::leaveAnswered, this, [this](bool isLeaving) {
        if (m_isAsking && isLeaving) {
            startWaiting();
        } else {
            m_isAsking = false;
        }
        if (!isLeaving) {
            m_sinceStay.start();
        }
    });
    // Held up by another page's question, the engine loses its own patience, asks all
    // the same, and does not listen to the answer.
    connect(&page, &WebEnginePage::windowCloseRequested, this, [this] {
        if (!m_sinceStay.isValid() || m_sinceStay.hasExpired(late)) {
            emit closing();
        }
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
    m_patience.start();
}

void WebCloseRequest::wait()
{
    // While a page waits for its user's answer, the engine stands still in all of them.
    m_waited = QApplication::activeModalWidget() != nullptr ? 0 : m_waited + 1;
    if (m_waited >= patience) {
        m_patience.stop();
        emit closing();
    }
}
