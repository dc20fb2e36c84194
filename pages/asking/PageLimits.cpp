#include "pages/asking/PageLimits.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

/// Scheme, host and port; empty for what a page makes itself and gives no site.
QString siteOf(const QUrl& url)
{
    if (url.scheme() == "blob"_L1)
        return siteOf(QUrl(url.path()));
    if (url.scheme() == "about"_L1 || url.scheme() == "data"_L1)
        return {};
    return url.scheme() + u"://"_s + url.host() + u':' + QString::number(url.port());
}

} // namespace

void DialogSilence::userNavigates()
{
    m_messages = 0;
    m_isSilenced = false;
}

void DialogSilence::navigationStarting(const QUrl& url)
{
    m_target = siteOf(url);
}

void DialogSilence::speaks(const QUrl& frame, const QUrl& shown)
{
    const QString site = siteOf(frame);
    if (m_page.isEmpty()) {
        m_page = shown.isEmpty() ? m_target : siteOf(shown);
        return;
    }
    // The engine calls a page shown when a step back to it has only begun, a page can start
    // to navigate and stay, and it can hold frames of any site: only all three together say
    // that another page has come.
    const bool isShown = shown.isEmpty() || siteOf(shown) == site;
    if (site != m_page && site == m_target && isShown) {
        m_page = site;
        userNavigates();
    }
}
