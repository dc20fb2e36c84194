#pragma once

#include "browser/EngineControl.h"
#include "engine/page/WebFrameReports.h"

#include <QDateTime>
#include <QUrl>

#include <functional>
#include <optional>

/// The last navigation of a page that got somewhere.
struct WebCommit {
    /// Its place in the page's history, from 0 on; -1 before the first one.
    int position = -1;
    /// The content itself for a page that this program has made.
    QUrl url;
    QDateTime time;

    bool operator==(const WebCommit& other) const = default;
};

/// A page at the moment of one of its signals.
struct WebPageState {
    /// May run ahead of what is shown: it is at times the address on its way.
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

    /// `completed` is called last in each function: it may destroy this object.
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
    /// What was shown when the navigation began, or was told last.
    WebCommit m_commit;
    bool m_isLoading = false;
    /// The new document stands there, not yet complete.
    bool m_hasMoved = false;
    /// The document shown is known: a change of its address is a navigation.
    bool m_isSettled = false;
    /// The load ended before its document reported and has been counted.
    bool m_isCounted = false;
};

/// Whether `title` is what the engine gives out as the title of a page at
/// `url` that has none: the address, readable, without its dispensable parts.
bool isAddressAsShown(const QString& title, const QUrl& url);
