#pragma once

#include "browser/EngineControl.h"

#include <QDateTime>
#include <QUrl>

#include <functional>
#include <optional>

class QWebEnginePage;
struct FrameReport;

/// The last navigation of a page that got somewhere.
struct WebCommit {
    /// Its place in the page's history, from 0 on; -1 before the first one.
    int position = -1;
    /// A page that this program has made has its whole content in it, as a data address.
    QUrl url;
    QDateTime time;

    bool operator==(const WebCommit& other) const = default;
};

/// That of what `page` shows.
WebCommit commitShown(const QWebEnginePage& page);

/// A page at the moment of one of its signals.
struct WebPageState {
    /// May run ahead of what is shown: at times it is the address that is being loaded.
    QUrl url;
    QString title;
    WebCommit commit;
};

/// The address of what is shown, as the user sees it.
QString shownAddress(const WebPageState& page);

/// Tells from the signals of one page which navigations have completed and
/// what the document shown is.
class WebVisits {
public:
    using Completed = std::function<void(const EngineFrame& frame, const QString& address)>;

    /// `completed` is the last that each function calls: it may destroy this object.
    explicit WebVisits(Completed completed) : m_completed(std::move(completed)) {}

    const std::optional<EngineDocument>& document() const { return m_document; }

    /// The main frame is about to go to `target`. The engine does not begin a
    /// new load for it while the previous one is still running.
    void navigationStarting(const QUrl& target, const WebPageState& page);
    void loadStarted(const WebPageState& page);
    void urlChanged(const WebPageState& page);
    void titleChanged(const WebPageState& page);
    void reported(const FrameReport& report, const WebPageState& page);
    void loadFinished(const WebPageState& page);

private:
    void expectDocument(const WebPageState& page);
    void noticeDocument(const WebPageState& page);
    void mainFrameReported(const FrameReport& report, const WebPageState& page);
    void subFrameReported(const FrameReport& report) const;
    void complete(const WebPageState& page) const;

    Completed m_completed;
    std::optional<EngineDocument> m_document;
    /// That of the document shown when the navigation began, or of the one that was told of
    /// last.
    WebCommit m_commit;
    bool m_isLoading = false;
    /// The new document has taken the place of the old one, and is not complete yet.
    bool m_isCommitted = false;
    /// The document shown has reported itself: from now on a change of its address is a
    /// navigation within it.
    bool m_isReported = false;
    /// The navigation has been told of when its load was stopped: a report of the document
    /// that comes after all is no visit of its own.
    bool m_isCompletedEarly = false;
};

/// Whether `title` is what the engine gives out as the title of a page at
/// `url` that has none: the address, decoded, without "http://" and a "/" at its end.
bool isAddressAsShown(const QString& title, const QUrl& url);
