#include "browser/WebCloseRequest.h"

#include "browser/WebEnginePage.h"

#include <QWebEngineHistory>

namespace {

constexpr std::chrono::seconds patience(2);

} // namespace

WebCloseRequest::WebCloseRequest(WebEnginePage& page) : m_page(page)
{
    m_patience.setSingleShot(true);
    m_patience.setInterval(patience);
    connect(&m_patience, &QTimer::timeout, this, &WebCloseRequest::unanswered);
    connect(&page, &WebEnginePage::leaveAsked, this, [this] { m_patience.stop(); });
    connect(&page, &WebEnginePage::leaveAnswered, this, [this](bool isLeaving) {
        if (m_isAsking && isLeaving) {
            m_patience.start();
        } else {
            m_isAsking = false;
        }
    });
}

bool WebCloseRequest::begin()
{
    const bool isAlive = m_page.renderProcessPid() > 0 && m_page.history()->count() > 0;
    if (!isAlive || m_page.isAsking()) {
        return false;
    }
    if (!m_isAsking) {
        m_isAsking = true;
        m_patience.start();
        QTimer::singleShot(0, this, [this] { m_page.triggerAction(QWebEnginePage::RequestClose); });
    }
    return true;
}
