#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTimer>

class QWebEngineDownloadRequest;
class WebEnginePage;

/// Freezes a page that nobody has seen for a while, as far as the engine recommends that, which
/// it does not while the page loads or is inspected. Nor does a page sleep that plays something,
/// has asked whether it may record, downloads, is printed, or has the user asked. It is never
/// discarded, so that nothing typed into it is lost, and goes on as soon as it is seen, sent
/// somewhere, told to close, or about to do any of these things.
class PageSleep : public QObject {
    Q_OBJECT
public:
    /// Goes before the page, which counts as seen at first.
    PageSleep(WebEnginePage& page, std::chrono::milliseconds limit);

    /// To be told before the view of the page is shown, and after it was hidden.
    void seen(bool isSeen);
    /// Has the page go on; while it is not seen the time begins anew.
    void wake();

private:
    void watchRecording();
    void watchDownloads();
    bool mustStayAwake() const;
    void sleep();

    WebEnginePage& m_page;
    /// Runs out once the page may sleep, and stays off then: nothing wakes the program for it.
    QTimer m_limit;
    bool m_isSeen = true;
    /// The document has asked for a camera, a microphone or the screen.
    bool m_mayRecord = false;
    QList<QPointer<QWebEngineDownloadRequest>> m_downloads;
};
