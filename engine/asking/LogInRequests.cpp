#include "engine/asking/LogInRequests.h"

#include "engine/asking/PagePrompt.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/SiteText.h"

#include <QAuthenticator>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestUser = 200;
/// A page that goes somewhere that soon after a refusal does so by itself, and must not
/// make the user refuse again.
constexpr qint64 refusalLasts = 3000; // milliseconds

bool isUnencrypted(const QUrl& url)
{
    return url.scheme() == "http"_L1 || url.scheme() == "ws"_L1 || url.scheme() == "ftp"_L1;
}

void fill(QAuthenticator& answer, const std::optional<Prompt::LogIn>& logIn)
{
    answer = QAuthenticator(); // an empty one means a refusal
    if (logIn) {
        answer.setUser(logIn->user);
        answer.setPassword(logIn->password);
    }
}

} // namespace

LogInRequests::LogInRequests(PagePrompt& prompt, QObject* parent)
    : QObject(parent), m_prompt(prompt)
{
    const WebEnginePage& page = prompt.page();
    connect(&page, &WebEnginePage::userNavigates, this, [this] {
        m_isRefused = false;
        m_last = {};
    });
    connect(&page, &WebEnginePage::navigationStarting, this, [this](const QUrl&, bool isMainFrame) {
        if (!isMainFrame)
            return;
        m_last = {};
        if (m_isRefused && m_sinceRefusal.elapsed() > refusalLasts)
            m_isRefused = false;
    });
    connect(&page, &QWebEnginePage::authenticationRequired, this,
            [this](const QUrl& url, QAuthenticator* answer) { serverAsks(url, *answer); });
    connect(&page, &QWebEnginePage::proxyAuthenticationRequired, this,
            [this](const QUrl& url, QAuthenticator* answer, const QString& proxy) {
                proxyAsks(url, proxy, *answer);
            });
}

std::optional<Prompt::LogIn> LogInRequests::ask(const QUrl& url, Prompt::LogInQuestion question)
{
    if (m_isRefused)
        return std::nullopt;
    if (question.site == m_last.site && question.realm == m_last.realm) {
        question.user = m_last.user;
        // The same realm can lock several addresses of a page, pictures say: the answer was
        // wrong only where the same one asks again.
        question.hasFailed = url == m_last.url;
    }
    std::optional<Prompt::LogIn> logIn = m_prompt.askLogIn(question);
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
                           .isUnencrypted = isUnencrypted(url),
                           .user = cleanLine(url.userName(), longestUser)}));
}

void LogInRequests::proxyAsks(const QUrl& url, const QString& proxy, QAuthenticator& answer)
{
    fill(answer, ask(url, {.site = cleanLine(proxy),
                           .realm = cleanLine(answer.realm()),
                           .isProxy = true,
                           .user = {}}));
}
