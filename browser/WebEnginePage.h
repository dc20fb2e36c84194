#pragma once

#include "browser/WebFrameReports.h"

#include <QPointer>
#include <QWebEnginePage>

/// A page whose frames report themselves, which says when it is about to go
/// somewhere, and which refuses what nobody has asked the user about.
class WebEnginePage : public QWebEnginePage {
    Q_OBJECT
public:
    /// `reports` is what the profile's script was made from; it outlives the page.
    WebEnginePage(QWebEngineProfile& profile, const WebFrameReports& reports, QObject* parent);

    /// While one lives, the page does: the engine waits for the answer to a
    /// question, and a window can be closed meanwhile.
    class Question {
    public:
        explicit Question(WebEnginePage& page) : m_page(&page) { ++m_page->m_questions; }
        ~Question();
        Q_DISABLE_COPY_MOVE(Question)

    private:
        QPointer<WebEnginePage> m_page;
    };

    /// The page's window has gone: the page follows when control is back in the
    /// event loop and no question is open.
    void retire();
    bool isRetired() const { return m_isRetired; }

signals:
    void frameReported(const FrameReport& report);
    /// The page, or one of its frames, is about to open `url`.
    void navigationStarting(const QUrl& url, bool isMainFrame);
    /// What the page was about to show is being saved as a file, or is not wanted.
    void downloadDecided();

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message,
                                  int lineNumber, const QString& sourceId) override;

private:
    void refusePermissions();

    const WebFrameReports& m_reports;
    int m_questions = 0;
    bool m_isRetired = false;
};
