#include "engine/page/WebSafety.h"

#include "engine/page/WebEnginePage.h"
#include "engine/page/WebErrorPage.h"
#include "pages/asking/PromptSession.h"
#include "pages/asking/SiteText.h"

#include <QWebEngineHistory>
#include <QWebEngineLoadingInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

WebSafety::WebSafety(WebEnginePage& page, PromptSession& session)
    : m_page(&page), m_session(session)
{
    connect(&page, &WebEnginePage::frameReported, this, [this](const FrameReport& report) {
        if (report.isMainFrame) {
            m_reported = QUrl(report.address);
            look();
        }
    });
    // A document that never reports itself is known when it is complete.
    connect(&page, &QWebEnginePage::loadingChanged, this,
            [this](const QWebEngineLoadingInfo& info) {
                if (info.status() == QWebEngineLoadingInfo::LoadSucceededStatus &&
                    !info.isErrorPage() && !WebErrorPage::isContent(info.url()))
                    m_reported = info.url();
                look();
            });
    // No signal says that another document is shown, which may not report itself for a long
    // time: each of these may come first.
    connect(&page, &QWebEnginePage::urlChanged, this, &WebSafety::look);
    connect(&page, &QWebEnginePage::titleChanged, this, &WebSafety::look);
    connect(&page, &QWebEnginePage::loadProgress, this, &WebSafety::look);
    connect(&session, &PromptSession::answersChanged, this, &WebSafety::look, Qt::QueuedConnection);
}

QUrl WebSafety::shown() const
{
    return m_page->history()->currentItem().url();
}

PageSafety WebSafety::safety() const
{
    if (!m_page)
        return {};
    const QUrl url = shown();
    const std::optional<CertificateException> allowed = m_session.certificates.allowed(url.host());
    const std::optional<CertificateException> takenBack =
        m_session.certificates.takenBack(url.host());
    PageSafety safety;
    safety.kind = safetyOf({.shown = url,
                            .reported = m_reported,
                            .exception = allowed     ? PageOrigin::Exception::Allowed
                                         : takenBack ? PageOrigin::Exception::TakenBack
                                                     : PageOrigin::Exception::None});
    safety.hasServer = !url.host().isEmpty();
    if (safety.hasServer || url.isLocalFile())
        safety.site = siteName(url);
    const bool isEncrypted = url.scheme() == "https"_L1 && safety.kind != PageSafety::Kind::Unknown;
    safety.isTakenBack = isEncrypted && takenBack && !allowed;
    if (const auto& exception = allowed ? allowed : takenBack; isEncrypted && exception)
        safety.certificate = {exception->issuer, exception->until, exception->problem};
    const std::vector<Entry> all = entries(url);
    for (const Entry& entry : all)
        safety.answers << entry.answer;
    return safety;
}

std::vector<WebSafety::Entry> WebSafety::entries(const QUrl& url) const
{
    std::vector<Entry> all;
    if (url.scheme() == "https"_L1 && m_session.certificates.allowed(url.host())) {
        all.push_back({{u"certificate"_s, u"Erlaubt: den Server trotz seines Zertifikats öffnen"_s},
                       [this, host = url.host()] { m_session.takeBackCertificate(host); }});
    }
    const auto permissions = m_session.permissions.answers(url);
    for (const auto& [kind, isGranted] : permissions) {
        all.push_back(
            {{u"permission %1"_s.arg(static_cast<int>(kind)), permissionAnswer(kind, isGranted)},
             [this, url, kind = kind] { m_session.takeBackPermission(url, kind); }});
    }
    QStringList schemes = m_session.desktopSchemes.values();
    schemes.sort();
    for (const QString& scheme : std::as_const(schemes)) {
        all.push_back({{u"scheme "_s + scheme,
                        u"Allen Seiten erlaubt: Adressen mit „%1:“ ohne Frage öffnen"_s.arg(
                            cleanLine(scheme, 20))},
                       [this, scheme] { m_session.takeBackDesktopScheme(scheme); }});
    }
    return all;
}

void WebSafety::takeBack(const QString& id)
{
    if (!m_page)
        return;
    const std::vector<Entry> all = entries(shown());
    const auto found = std::find_if(all.cbegin(), all.cend(),
                                    [&](const Entry& entry) { return entry.answer.id == id; });
    if (found != all.cend())
        found->takeBack();
}

void WebSafety::look()
{
    const PageSafety now = safety();
    if (now == m_told)
        return;
    m_told = now;
    emit changed();
}
