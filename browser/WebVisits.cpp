#include "browser/WebVisits.h"

#include "browser/WebErrorPage.h"

using namespace Qt::StringLiterals;

namespace {

QString readable(const QString& address)
{
    QString text = QUrl::fromPercentEncoding(address.toUtf8());
    if (text.startsWith("http://"_L1)) {
        text.remove(0, 7);
    }
    return text.endsWith(u'/') ? text.chopped(1) : text;
}

/// A page of the engine's own, or of this program, in place of the page wanted.
bool isStandIn(const FrameReport& report, const QUrl& url)
{
    return report.address.startsWith("chrome-error:"_L1) || WebErrorPage::isAt(url);
}

bool isWithinDocument(const QUrl& target, const QUrl& url)
{
    return target.hasFragment() && target.matches(url, QUrl::RemoveFragment);
}

} // namespace

bool isAddressAsShown(const QString& title, const QUrl& url)
{
    if (url.isLocalFile()) {
        return readable(title) == readable(url.fileName(QUrl::FullyEncoded));
    }
    return readable(title) == readable(url.toString(QUrl::RemoveUserInfo));
}

void WebVisits::navigationStarting(const QUrl& target, const QUrl& url)
{
    if (m_isLoading && !isWithinDocument(target, url)) {
        expectDocument();
    }
}

void WebVisits::loadStarted()
{
    m_isLoading = true;
    expectDocument();
}

void WebVisits::expectDocument()
{
    m_hasMoved = false;
    m_isSettled = false;
    m_isCounted = false;
}

void WebVisits::urlChanged(const QUrl& url)
{
    if (url.isEmpty()) { // a first page that did not come off
        m_isSettled = false;
        return;
    }
    if (m_isSettled) {
        complete(url);
    } else if (m_isLoading && !m_hasMoved) { // the new page takes the old one's place
        m_hasMoved = true;
        m_document.emplace();
    }
}

void WebVisits::titleChanged(const QString& title, const QUrl& url)
{
    const bool isOfThisDocument = m_isSettled || !m_hasMoved;
    if (m_document && isOfThisDocument && !isAddressAsShown(title, url)) {
        m_document->Title = title;
    }
}

void WebVisits::reported(const FrameReport& report, const QUrl& url)
{
    if (report.isMainFrame) {
        mainFrameReported(report, url);
    } else if (!url.isEmpty()) {
        subFrameReported(report);
    }
}

void WebVisits::mainFrameReported(const FrameReport& report, const QUrl& url)
{
    if (isStandIn(report, url)) {
        m_document.reset();
    } else {
        m_document = EngineDocument{report.title};
    }
    if (url.isEmpty()) { // written into a window that never went anywhere
        return;
    }
    // While the next page is on its way this may be the last word of the
    // previous one: only a change of the address tells them apart.
    m_isSettled = m_hasMoved || !m_isLoading;
    if (m_isCounted) {
        m_isCounted = false;
        return;
    }
    complete(url);
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

void WebVisits::loadFinished(const QString& title, const QUrl& url)
{
    const bool isUncounted = m_hasMoved && !m_isSettled && !url.isEmpty();
    m_isLoading = false;
    m_isSettled = !url.isEmpty();
    if (isUncounted) { // stopped when the page had come but was not complete
        m_isCounted = true;
        if (m_document && !isAddressAsShown(title, url)) {
            m_document->Title = title;
        }
        complete(url);
    }
}

void WebVisits::complete(const QUrl& url) const
{
    const Completed completed = m_completed; // outlives this object
    const EngineFrame frame{m_document};
    completed(frame, WebErrorPage::shownAddress(url));
}
