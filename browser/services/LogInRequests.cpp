#include "browser/services/LogInRequests.h"

#include "browser/WebEnginePage.h"
#include "browser/services/AskingPage.h"
#include "browser/services/SiteText.h"

#include <QAuthenticator>

namespace {

constexpr qsizetype longestUser = 200;

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
    connect(&asking.page(), &QWebEnginePage::authenticationRequired, this,
            [this](const QUrl& url, QAuthenticator* answer) { serverAsks(url, *answer); });
    connect(&asking.page(), &QWebEnginePage::proxyAuthenticationRequired, this,
            [this](const QUrl&, QAuthenticator* answer, const QString& proxy) {
                proxyAsks(proxy, *answer);
            });
}

void LogInRequests::serverAsks(const QUrl& url, QAuthenticator& answer)
{
    fill(answer, m_asking.logIn({.site = siteName(url),
                                 .realm = cleanLine(answer.realm()),
                                 .isReadable = isReadableOnTheWay(url),
                                 .user = cleanLine(url.userName(), longestUser)}));
}

void LogInRequests::proxyAsks(const QString& proxy, QAuthenticator& answer)
{
    fill(answer, m_asking.logIn({.site = cleanLine(proxy),
                                 .realm = cleanLine(answer.realm()),
                                 .isProxy = true,
                                 .user = {}}));
}
