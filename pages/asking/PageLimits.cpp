#include "pages/asking/PageLimits.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

/// Scheme, host and port; empty for documents that a page makes itself and that tell no site.
QString siteOf(const QUrl& url)
{
    if (url.scheme() == "blob"_L1)
        return siteOf(QUrl(url.path()));
    if (url.scheme() == "about"_L1 || url.scheme() == "data"_L1)
        return {};
    return url.scheme() + u"://"_s + url.host() + u':' + QString::number(url.port());
}

} // namespace

bool PopupLimit::mayOpen(std::chrono::milliseconds now, bool isUsersWish)
{
    if (isUsersWish) {
        m_opened.clear();
        return true;
    }
    while (!m_opened.empty() && now - m_opened.front() >= span)
        m_opened.pop_front();
    if (m_opened.size() >= mostWindows)
        return false;
    m_opened.push_back(now);
    return true;
}

bool PrintLimit::Page::mayPrint() const
{
    const quint64 cancelledAt = m_all.m_cancelledAt;
    const bool isAnswerToClick = m_all.m_clickedAt > cancelledAt && m_madeAt > m_all.m_clickedAt;
    return cancelledAt == 0 || m_clickedAt > cancelledAt || isAnswerToClick;
}

void DialogLimit::userNavigates()
{
    m_dialogs = 0;
    m_isSilenced = false;
}

void DialogLimit::navigationStarting(const QUrl& url)
{
    m_target = siteOf(url);
}

void DialogLimit::dialogStarting(const QUrl& frame, const QUrl& shown)
{
    const QString site = siteOf(frame);
    if (m_site.isEmpty()) {
        m_site = shown.isEmpty() ? m_target : siteOf(shown);
        return;
    }
    // The engine calls a page shown when a step back to it has only begun, a page can start
    // to navigate and stay, and it can hold frames of any site: only all three together say
    // that another page has come.
    const bool isShown = shown.isEmpty() || siteOf(shown) == site;
    if (site != m_site && site == m_target && isShown) {
        m_site = site;
        userNavigates();
    }
}
