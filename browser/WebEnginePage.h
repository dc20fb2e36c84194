#pragma once

#include "browser/WebFrameReports.h"

#include <QWebEnginePage>

/// A page whose frames report themselves, which says when it is about to go
/// somewhere, and which refuses what nobody has asked the user about.
class WebEnginePage : public QWebEnginePage {
    Q_OBJECT
public:
    /// `reports` is what the profile's script was made from; it outlives the page.
    WebEnginePage(QWebEngineProfile& profile, const WebFrameReports& reports, QObject* parent);

signals:
    void frameReported(const FrameReport& report);
    /// The page, or one of its frames, is about to open `url`.
    void navigationStarting(const QUrl& url, bool isMainFrame);

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
                                  int lineNumber, const QString& sourceId) override;

private:
    void refusePermissions();

    const WebFrameReports& m_reports;
};
