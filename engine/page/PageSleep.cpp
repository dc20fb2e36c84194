#include "engine/page/PageSleep.h"

#include "engine/page/WebEnginePage.h"

#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
#include <QWebEnginePermission>
#endif

#include <algorithm>

using State = QWebEnginePage::LifecycleState;

namespace {

#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
using Kind = QWebEnginePermission::PermissionType;
#else
using Kind = QWebEnginePage::Feature;
#endif

bool isRecording(Kind kind)
{
    return kind == Kind::MediaAudioCapture || kind == Kind::MediaVideoCapture ||
           kind == Kind::MediaAudioVideoCapture || kind == Kind::DesktopVideoCapture ||
           kind == Kind::DesktopAudioVideoCapture;
}

bool isRunning(const QPointer<QWebEngineDownloadRequest>& download)
{
    return download && !download->isFinished();
}

} // namespace

PageSleep::PageSleep(WebEnginePage& page, std::chrono::milliseconds limit) : m_page(page)
{
    m_limit.setSingleShot(true);
    m_limit.setInterval(limit);
    connect(&m_limit, &QTimer::timeout, this, &PageSleep::sleep);
    connect(&page, &WebEnginePage::userNavigates, this, &PageSleep::wake);
    connect(&page, &WebEnginePage::kept, this, &PageSleep::wake);
    // What the engine recommends does not follow the sound of a hidden page (seen with Qt 6.4).
    connect(&page, &QWebEnginePage::recentlyAudibleChanged, this, &PageSleep::wake);
    connect(
        &page, &QWebEnginePage::recommendedStateChanged, this,
        [this](State state) {
            if (state == State::Active)
                wake();
            else if (!m_limit.isActive())
                sleep();
        },
        Qt::QueuedConnection);
    watchRecording();
    watchDownloads();
}

void PageSleep::watchRecording()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    connect(&m_page, &QWebEnginePage::permissionRequested, this,
            [this](const QWebEnginePermission& permission) {
                m_mayRecord |= isRecording(permission.permissionType());
            });
#else
    connect(&m_page, &QWebEnginePage::featurePermissionRequested, this,
            [this](const QUrl&, Kind kind) { m_mayRecord |= isRecording(kind); });
#endif
    connect(&m_page, &QWebEnginePage::loadStarted, this, [this] { m_mayRecord = false; });
}

void PageSleep::watchDownloads()
{
    connect(m_page.profile(), &QWebEngineProfile::downloadRequested, this,
            [this](QWebEngineDownloadRequest* download) {
                m_downloads.removeIf([](const auto& each) { return !isRunning(each); });
                if (download->page() == &m_page)
                    m_downloads.append(download);
            });
}

void PageSleep::seen(bool isSeen)
{
    if (m_isSeen == isSeen)
        return;
    m_isSeen = isSeen;
    m_limit.stop();
    wake();
}

void PageSleep::wake()
{
    if (m_page.lifecycleState() != State::Active)
        m_page.setLifecycleState(State::Active);
    if (!m_isSeen)
        m_limit.start();
}

bool PageSleep::mustStayAwake() const
{
    return m_page.isKept() || m_page.recentlyAudible() || m_mayRecord ||
           std::any_of(m_downloads.begin(), m_downloads.end(), isRunning);
}

void PageSleep::sleep()
{
    if (m_isSeen || m_page.lifecycleState() != State::Active)
        return;
    if (mustStayAwake())
        m_limit.start();
    else if (m_page.recommendedState() != State::Active)
        m_page.setLifecycleState(State::Frozen);
}
