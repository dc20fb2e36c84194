#include "engine/viewing/NetworkReturn.h"

#include "engine/page/WebEnginePage.h"
#include "pages/viewing/RouteWatch.h"

#include <QWebEngineLoadingInfo>

#include <algorithm>
#include <array>

namespace {

/// A new way into the network comes in several steps, and the names of servers are to be had
/// only after the last of them.
constexpr std::chrono::seconds untilSettled(2);

/// Whether the engine's number for an error tells of a network that is missing: changed under
/// way, disconnected, no name, no address, too late, no answer about the name.
bool isWithoutNetwork(int error)
{
    constexpr std::array errors{-21, -105, -106, -109, -118, -137};
    return std::find(errors.begin(), errors.end(), error) != errors.end();
}

} // namespace

NetworkReturn::NetworkReturn(WebEnginePage* page) : QObject(page), m_page(page)
{
    m_settling.setSingleShot(true);
    m_settling.setInterval(untilSettled);
    connect(&m_settling, &QTimer::timeout, this, &NetworkReturn::reload);
    connect(page, &QWebEnginePage::loadingChanged, this, &NetworkReturn::loadingChanged);
    if (page->isLoading())
        watch();
}

NetworkReturn::~NetworkReturn() = default;

void NetworkReturn::loadingChanged(const QWebEngineLoadingInfo& load)
{
    const bool isStart = load.status() == QWebEngineLoadingInfo::LoadStartedStatus;
    const bool isLost = load.status() == QWebEngineLoadingInfo::LoadFailedStatus &&
                        isWithoutNetwork(load.errorCode());
    if (!isLost) {
        m_settling.stop();
        m_watch.reset();
    }
    if ((isStart || isLost) && !m_watch)
        watch();
}

void NetworkReturn::watch()
{
    m_watch = std::make_unique<RouteWatch>();
    connect(m_watch.get(), &RouteWatch::routeAdded, &m_settling, qOverload<>(&QTimer::start));
}

void NetworkReturn::reload()
{
    if (m_page->isLoading()) {
        m_settling.start(); // unless the load ends well
        return;
    }
    m_watch.reset();
    // The user would be asked about a form, maybe in the middle of something else.
    if (!m_page->isFromSentForm())
        m_page->reload();
}
