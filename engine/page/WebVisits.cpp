#include "engine/page/WebVisits.h"

#include "engine/page/WebEnginePage.h"
#include "engine/page/WebErrorPage.h"

#include <QWebEngineHistory>

using namespace Qt::StringLiterals;

namespace {

QString readable(const QString& address)
{
    QString text = QUrl::fromPercentEncoding(address.toUtf8());
    if (text.startsWith("http://"_L1))
        text.remove(0, 7);
    return text.endsWith(u'/') ? text.chopped(1) : text;
}

/// Whether a page of the engine's own, or of this program, stands in place of the one wanted.
bool isErrorPage(const FrameReport& report, const WebPageState& page)
{
    return WebErrorPage::isEnginesOwn(report.address) || WebErrorPage::isAt(page.url);
}

bool isWithinDocument(const QUrl& target, const QUrl& url)
{
    return target.hasFragment() && target.matches(url, QUrl::RemoveFragment);
}

} // namespace

bool isAddressAsShown(const QString& title, const QUrl& url)
{
    if (url.isLocalFile())
        return readable(title) == readable(url.fileName(QUrl::FullyEncoded));
    return readable(title) == readable(url.toString(QUrl::RemoveUserInfo));
}

WebCommit commitShown(const QWebEnginePage& page)
{
    const QWebEngineHistory& history = *page.history();
    const QWebEngineHistoryItem item = history.currentItem();
    return {history.currentItemIndex(), item.url(), item.lastVisited()};
}

QString shownAddress(const WebPageState& page)
{
    const QUrl& committed = page.commit.url;
    const bool isKnown = !committed.isEmpty() && !WebErrorPage::isContent(committed);
    return WebErrorPage::shownAddress(isKnown ? committed : page.url);
}

void WebVisits::navigationStarting(const QUrl& target, const WebPageState& page)
{
    if (m_isLoading && !isWithinDocument(target, page.url))
        expectDocument(page);
}

void WebVisits::loadStarted(const WebPageState& page)
{
    m_isLoading = true;
    expectDocument(page);
}

void WebVisits::expectDocument(const WebPageState& page)
{
    m_commit = page.commit;
    m_isCommitted = false;
    m_isReported = false;
    m_isCompletedEarly = false;
}

void WebVisits::noticeDocument(const WebPageState& page)
{
    if (m_isLoading && !m_isReported && !m_isCommitted && page.commit != m_commit) {
        m_isCommitted = true;
        m_document.emplace(); // the new page takes the old one's place
    }
}

void WebVisits::urlChanged(const WebPageState& page)
{
    noticeDocument(page);
    if (page.url.isEmpty()) { // the first page of a window has failed
        m_isReported = false;
    } else if (m_isReported && page.commit != m_commit) {
        m_commit = page.commit;
        complete(page);
    }
}

void WebVisits::titleChanged(const WebPageState& page)
{
    noticeDocument(page);
    const bool isOfThisDocument = m_isReported || !m_isCommitted;
    if (m_document && isOfThisDocument && !isAddressAsShown(page.title, page.url))
        m_document->Title = page.title;
}

void WebVisits::reported(const FrameReport& report, const WebPageState& page)
{
    noticeDocument(page);
    if (report.isMainFrame)
        mainFrameReported(report, page);
    else if (!page.url.isEmpty())
        subFrameReported(report);
}

void WebVisits::mainFrameReported(const FrameReport& report, const WebPageState& page)
{
    if (isErrorPage(report, page))
        m_document.reset();
    else
        m_document = EngineDocument{report.title};
    if (page.url.isEmpty()) // a document written into a window that never went anywhere
        return;
    // While the next page is loading, this may be a late report of the previous one. Only
    // the commits that the engine knows of tell them apart.
    m_isReported = m_isCommitted || !m_isLoading;
    m_commit = page.commit;
    if (m_isCompletedEarly) {
        m_isCompletedEarly = false;
        return;
    }
    complete(page);
}

void WebVisits::subFrameReported(const FrameReport& report) const
{
    const QUrl url(report.address);
    const bool isEmptyFrame = url.scheme() == "about"_L1;
    const bool isEnginesOwn = url.scheme().startsWith("chrome"_L1);
    if (url.isValid() && !isEmptyFrame && !isEnginesOwn) {
        const Completed completed = m_completed;
        completed({EngineDocument{report.title}}, url.toString(QUrl::FullyEncoded));
    }
}

void WebVisits::loadFinished(const WebPageState& page)
{
    noticeDocument(page);
    const bool isStoppedEarly = m_isCommitted && !m_isReported && !page.url.isEmpty();
    m_isLoading = false;
    m_isReported = !page.url.isEmpty();
    m_commit = page.commit;
    if (isStoppedEarly) { // stopped when the page had come but was not complete
        m_isCompletedEarly = true;
        if (m_document && !isAddressAsShown(page.title, page.url))
            m_document->Title = page.title;
        complete(page);
    }
}

void WebVisits::complete(const WebPageState& page) const
{
    const Completed completed = m_completed; // outlives this object
    const EngineFrame frame{m_document};
    completed(frame, shownAddress(page));
}
