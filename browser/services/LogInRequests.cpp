#include "browser/services/LogInRequests.h"

#include "browser/WebEnginePage.h"
#include "browser/services/AskingPage.h"
#include "browser/services/SiteText.h"

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
    connect(&page, &WebEnginePage::userNavigates, this, [this] { m_isRefused = false; });
    connect(&page, &WebEnginePage::navigationStarting, this, [this](const QUrl&, bool isMainFrame) {
        // A page that goes on and on by itself is not another one.
        if (isMainFrame && m_isRefused && m_sinceRefusal.elapsed() > refusalLasts) {
            m_isRefused = false;
        }
    });
    connect(&page, &QWebEnginePage::authenticationRequired, this,
            [this](const QUrl& url, QAuthenticator* answer) { serverAsks(url, *answer); });
    connect(&page, &QWebEnginePage::proxyAuthenticationRequired, this,
            [this](const QUrl&, QAuthenticator* answer, const QString& proxy) {
                proxyAsks(proxy, *answer);
            });
}

std::optional<LogIn> LogInRequests::ask(const LogInQuestion& question)
{
    if (m_isRefused) {
        return std::nullopt;
    }
    std::optional<LogIn> logIn = m_asking.logIn(question);
    if (!logIn) {
        m_isRefused = true;
        m_sinceRefusal.start();
    }
    return logIn;
}

void LogInRequests::serverAsks(const QUrl& url, QAuthenticator& answer)
{
    fill(answer, ask({.site = siteName(url),
                      .realm = cleanLine(answer.realm()),
                      .isReadable = isReadableOnTheWay(url),
                      .user = cleanLine(url.userName(), longestUser)}));
}

void LogInRequests::proxyAsks(const QString& proxy, QAuthenticator& answer)
{
    fill(answer, ask({.site = cleanLine(proxy),
                      .realm = cleanLine(answer.realm()),
                      .isProxy = true,
                      .user = {}}));
}
