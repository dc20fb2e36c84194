#include "browser/WebEnginePage.h"

WebEnginePage::WebEnginePage(QWebEngineProfile& profile, const WebFrameReports& reports,
                             QObject* parent)
    : QWebEnginePage(&profile, parent), m_reports(reports)
{
    refusePermissions();
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

bool WebEnginePage::acceptNavigationRequest(const QUrl& url, NavigationType /*type*/,
                                            bool isMainFrame)
{
    emit navigationStarting(url, isMainFrame);
    return true;
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

void WebEnginePage::refusePermissions()
{
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    connect(this, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl& origin, Feature feature) {
                setFeaturePermission(origin, feature, PermissionDeniedByUser);
            });
    QT_WARNING_POP
}
