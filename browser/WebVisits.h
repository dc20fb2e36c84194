#pragma once

#include "browser/EngineControl.h"
#include "browser/WebFrameReports.h"

#include <QUrl>

#include <functional>
#include <optional>

/// Tells from the signals of one page which navigations have completed and
/// what the document shown is. Each call gets the page's address of the moment.
class WebVisits {
public:
    using Completed = std::function<void(const EngineFrame& frame, const QString& address)>;

    /// `completed` is called last in each function: it may destroy this object.
    explicit WebVisits(Completed completed) : m_completed(std::move(completed)) {}

    const std::optional<EngineDocument>& document() const { return m_document; }

    /// The main frame is about to leave `url` for `target`. The engine does
    /// not begin a new load for it while the previous one is still running.
    void navigationStarting(const QUrl& target, const QUrl& url);
    void loadStarted();
    void urlChanged(const QUrl& url);
    void titleChanged(const QString& title, const QUrl& url);
    void reported(const FrameReport& report, const QUrl& url);
    void loadFinished(const QString& title, const QUrl& url);

private:
    void expectDocument();
    void mainFrameReported(const FrameReport& report, const QUrl& url);
    void subFrameReported(const FrameReport& report) const;
    void complete(const QUrl& url) const;

    Completed m_completed;
    std::optional<EngineDocument> m_document;
    bool m_isLoading = false;
    /// The address changed since the navigation began.
    bool m_hasMoved = false;
    /// The document shown is known: a change of its address is a navigation.
    bool m_isSettled = false;
    /// The load ended before its document reported and has been counted.
    bool m_isCounted = false;
};

/// Whether `title` is what the engine gives out as the title of a page at
/// `url` that has none: the address, readable, without its dispensable parts.
bool isAddressAsShown(const QString& title, const QUrl& url);
