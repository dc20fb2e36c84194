#include "browser/WebEnginePage.h"

#include "browser/WebScriptAnswers.h"
#include "browser/services/DesktopSchemes.h"

#include <QCoreApplication>

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

WebEnginePage::Question::~Question()
{
    if (m_page && --m_page->m_questions == 0 && m_page->m_isRetired) {
        m_page->deleteLater();
    }
}

void WebEnginePage::retire()
{
    m_isRetired = true;
    if (m_questions == 0) {
        deleteLater();
    }
}

bool WebEnginePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame)
{
    if (isForDesktop(url)) {
        if (type == NavigationTypeLinkClicked) {
            emit desktopAddressMet(url, false);
        }
        return false;
    }
    if (isForNobody(url)) {
        emit barredAddressMet(url);
        return false;
    }
    emit navigationStarting(url, isMainFrame);
    return true;
}

void WebEnginePage::javaScriptAlert(const QUrl& site, const QString& text)
{
    if (m_answers != nullptr) {
        m_answers->alert(site, text);
    }
}

bool WebEnginePage::javaScriptConfirm(const QUrl& site, const QString& text)
{
    if (text == leaveQuestion()) {
        return askToLeave();
    }
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

void WebEnginePage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level,
                                             const QString& message, int lineNumber,
                                             const QString& sourceId)
{
    if (const std::optional<FrameReport> report = m_reports.read(message)) {
        emit frameReported(*report);
        return;
    }
    QWebEnginePage::javaScriptConsoleMessage(level, message, lineNumber, sourceId);
}
