#include "engine/asking/LogInRequests.h"

#include "engine/asking/PagePrompt.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/SiteText.h"

#include <QAuthenticator>

namespace {

constexpr qsizetype longestUser = 200;
constexpr qint64 refusalLasts = 3000; // milliseconds

void fill(QAuthenticator& answer, const std::optional<LogIn>& logIn)
{
    answer = QAuthenticator(); // refused, unless it is filled
    if (logIn) {
        answer.setUser(logIn->user);
        answer.setPassword(logIn->password);
    }
}

} // namespace

LogInRequests::LogInRequests(AskingPage& asking, QObject* parent)
    : QObject(parent), m_asking(asking)
{
    const WebEnginePage& page = asking.page();
    connect(&page, &WebEnginePage::userNavigates, this, [this] {
        m_isRefused = false;
        m_last = {};
    });
    connect(&page, &WebEnginePage::navigationStarting, this, [this](const QUrl&, bool isMainFrame) {
        if (!isMainFrame) {
            return;
        }
        m_last = {};
        // A page that goes on and on by itself is not another one.
        if (m_isRefused && m_sinceRefusal.elapsed() > refusalLasts) {
            m_isRefused = false;
        }
    });
    connect(&page, &QWebEnginePage::authenticationRequired, this,
            [this](const QUrl& url, QAuthenticator* answer) { serverAsks(url, *answer); });
    connect(&page, &QWebEnginePage::proxyAuthenticationRequired, this,
            [this](const QUrl& url, QAuthenticator* answer, const QString& proxy) {
                proxyAsks(url, proxy, *answer);
            });
}

std::optional<LogIn> LogInRequests::ask(const QUrl& url, LogInQuestion question)
{
    if (m_isRefused)
        return std::nullopt;
    if (question.site == m_last.site && question.realm == m_last.realm) {
        question.user = m_last.user;
        question.hasFailed = url == m_last.url; // another picture, say, may just as well be locked
    }
    std::optional<LogIn> logIn = m_asking.logIn(question);
    if (logIn) {
        m_last = {url, question.site, question.realm, cleanLine(logIn->user, longestUser)};
    } else {
        m_isRefused = true;
        m_sinceRefusal.start();
    }
    return logIn;
}

void LogInRequests::serverAsks(const QUrl& url, QAuthenticator& answer)
{
    fill(answer, ask(url, {.site = siteName(url),
                           .realm = cleanLine(answer.realm()),
                           .isReadable = isReadableOnTheWay(url),
                           .user = cleanLine(url.userName(), longestUser)}));
}

void LogInRequests::proxyAsks(const QUrl& url, const QString& proxy, QAuthenticator& answer)
{
    fill(answer, ask(url, {.site = cleanLine(proxy),
                           .realm = cleanLine(answer.realm()),
                           .isProxy = true,
                           .user = {}}));
}
