#include "engine/page/WebEnginePage.h"

#include "engine/page/WebErrorPage.h"
#include "engine/page/WebScriptAnswers.h"
#include "engine/page/WebSentForm.h"
#include "pages/asking/DesktopSchemes.h"

#include <QCoreApplication>
#include <QWebEngineHistory>

namespace {

/// The engine asks this by way of a question of a script.
QString leaveQuestion()
{
    return QCoreApplication::translate("QWebEnginePage",
                                       "Are you sure you want to leave this page? "
                                       "Changes that you made may not be saved.");
}

} // namespace

WebEnginePage::WebEnginePage(QWebEngineProfile& profile, const WebFrameReports& reports,
                             QObject* parent)
    : QWebEnginePage(&profile, parent), m_reports(reports)
{
}

WebEnginePage::Keeper::~Keeper()
{
    if (m_page && --m_page->m_keepers == 0 && m_page->m_isRetired)
        m_page->deleteLater();
}

WebEnginePage::Question::~Question()
{
    if (m_page)
        --m_page->m_questions;
}

void WebEnginePage::retire()
{
    m_isRetired = true;
    if (m_keepers == 0)
        deleteLater();
}

void WebEnginePage::reload(WebAction action)
{
    emit userNavigates();
    if (isFromSentForm(*history()))
        emit resendingWanted(action);
    else
        triggerAction(action);
}

bool WebEnginePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame)
{
    if (isForDesktop(url)) {
        if (type == NavigationTypeLinkClicked)
            emit desktopAddressMet(url, false);
        return false;
    }
    // Our own page of an address that is none, on its way or loaded once more.
    const bool isOurs = WebErrorPage::isAt(url) && type != NavigationTypeLinkClicked &&
                        type != NavigationTypeOther && type != NavigationTypeRedirect;
    if (isForNobody(url) && !isOurs) {
        emit barredAddressMet(url);
        return false;
    }
    emit navigationStarting(url, isMainFrame);
    return true;
}

void WebEnginePage::javaScriptAlert(const QUrl& site, const QString& text)
{
    if (m_answers != nullptr)
        m_answers->alert(site, text);
}

bool WebEnginePage::javaScriptConfirm(const QUrl& site, const QString& text)
{
    if (text == leaveQuestion())
        return askToLeave();
    return m_answers != nullptr && m_answers->confirm(site, text);
}

bool WebEnginePage::javaScriptPrompt(const QUrl& site, const QString& text, const QString& preset,
                                     QString* result)
{
    const auto answer = m_answers != nullptr ? m_answers->prompt(site, text, preset) : std::nullopt;
    *result = answer.value_or(QString());
    return answer.has_value();
}

bool WebEnginePage::askToLeave()
{
    const Question question(*this);
    emit leaveAsked();
    const bool isLeaving = m_answers == nullptr || m_answers->leave();
    emit leaveAnswered(isLeaving);
    return isLeaving;
}

void WebEnginePage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel /*level*/,
                                             const QString& message, int /*lineNumber*/,
                                             const QString& /*sourceId*/)
{
    // Everything else is dropped: a page could fill the program's own output with it.

    if (const std::optional<FrameReport> report = m_reports.read(message))
        emit frameReported(*report);
}
