#include "engine/WebEngineHost.h"

#include "address/SearchAddress.h"
#include "base/Errors.h"
#include "base/Prefer.h"
#include "base/Prompt.h"
#include "base/RunCommand.h"
#include "engine/EngineStart.h"
#include "engine/ProfileServices.h"
#include "pages/viewing/StoredWebData.h"

#include <QApplication>
#include <QQuickWidget>
#include <QWebEngineProfile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// How often is looked whether what private windows have left has ended, too.
constexpr std::chrono::milliseconds untilUnused(200);

std::unique_ptr<QWebEngineProfile> startEngine(const QString& dataFolder,
                                               const QString& cacheFolder)
{
    prepareEngineStart();
    removeMarkedWebData(dataFolder);
    keepIconsOffDisk(dataFolder);
    auto profile = std::make_unique<QWebEngineProfile>(u"Tessera"_s);
    profile->setPersistentStoragePath(dataFolder);
    profile->setCachePath(cacheFolder);
    return profile;
}

/// The first page in a window that is already there makes Qt replace it by one that the
/// engine can draw into, without the state, the place and the flags that it had (seen with
/// Qt 6.4.2). A window that has held such a child from the start stays. Before this is
/// removed, maximise the frame, close all pages at the start, and open one.
void keepNativeWindow(QWidget& frame)
{
    auto* const child = new QQuickWidget(&frame);
    child->setObjectName(u"firstPageSurface"_s);
    child->resize(0, 0);
    child->hide();
}

QString questionAboutDownloads(int count)
{
    return unfinishedText(count) + (count == 1 ? u" Trotzdem beenden und ihn abbrechen?"_s
                                               : u" Trotzdem beenden und sie abbrechen?"_s);
}
} // namespace

WebEngineHost::WebEngineHost(const QString& dataFolder, const QString& cacheFolder,
                             AddressResolver resolve, std::chrono::milliseconds sleepAfter)
    : m_dataFolder(dataFolder), m_surroundings{m_reports,
                                               m_turns,
                                               {std::move(resolve), searchResolver()},
                                               sleepAfter},
      m_ordinary(startEngine(dataFolder, cacheFolder), m_surroundings)
{
    m_endTimer.setInterval(untilUnused);
    QObject::connect(&m_endTimer, &QTimer::timeout, &m_endTimer, [this] { endUnused(); });
}

WebEngineHost::~WebEngineHost() = default;

SearchResolver WebEngineHost::searchResolver()
{
    return [this](const QString& query) {
        QUrl engine;
        ignoringErrors([&] {
            engine = m_surroundings.resolve.address(m_shell->preferences().SearchEngine());
        });
        return searchAddress(engine, query);
    };
}

EngineFactory WebEngineHost::factory()
{
    return [this](QWidget* parent) { return m_ordinary.makeEngine(parent); };
}

EngineFactory WebEngineHost::privateFactory()
{
    return [this](QWidget* parent) {
        if (!m_private)
            m_private = makePrivate();
        return m_private->makeEngine(parent);
    };
}

std::unique_ptr<WebProfile> WebEngineHost::makePrivate()
{
    // A profile without a name stores nothing.
    auto made = std::make_unique<WebProfile>(std::make_unique<QWebEngineProfile>(), m_surroundings);
    serve(*made);
    QObject::connect(made.get(), &WebProfile::abandoned, &m_endTimer,
                     [this] { putPrivateAside(); });
    return made;
}

void WebEngineHost::putPrivateAside()
{
    if (ProfileServices* const services = m_private->services())
        QTimer::singleShot(0, services, &ProfileServices::windowsGone);
    m_abandoned.push_back(std::move(m_private));
    // Pages go, and lists close, when control is back in the event loop.
    m_endTimer.start();
}

void WebEngineHost::endUnused()
{
    // Whoever asks the user may be at work for one of them.
    if (m_turns.isHeld() || QApplication::activeModalWidget() != nullptr)
        return;
    std::erase_if(m_abandoned, [](const auto& profile) { return profile->isUnused(); });
    if (m_abandoned.empty())
        m_endTimer.stop();
}

void WebEngineHost::serve(Shell& shell, QWidget* frame)
{
    m_shell = &shell;
    m_frame = frame;
    serve(m_ordinary);
    keepNativeWindow(*frame);
}

void WebEngineHost::serve(WebProfile& profile)
{
    profile.serve(*m_shell, m_frame, m_dataFolder);
    QObject::connect(profile.services(), &ProfileServices::deletionWanted, &m_endTimer,
                     [this](const BrowserData& data) { deleteData(data); });
}

std::vector<WebProfile*> WebEngineHost::profiles()
{
    std::vector<WebProfile*> all{&m_ordinary};
    if (m_private)
        all.push_back(m_private.get());
    for (const auto& profile : m_abandoned)
        all.push_back(profile.get());
    return all;
}

bool WebEngineHost::mayEnd()
{
    if (m_ordinary.services() == nullptr)
        return true;
    int open = 0;
    for (const WebProfile* profile : profiles())
        open += profile->services()->openDownloads();
    if (open == 0)
        return true;
    const PromptTurns::Hold hold(m_turns);
    const DropsDisabled guard(*m_shell);
    const Prompt::Question question{.title = u"Meldung"_s,
                                    .text = questionAboutDownloads(open),
                                    .accept = u"&Ja"_s,
                                    .refuse = u"&Nein"_s,
                                    .isRisky = true};
    return m_shell->prompt().ask(m_frame, question).isAccepted;
}

void WebEngineHost::cancelDownloads()
{
    for (const WebProfile* profile : profiles())
        profile->services()->cancelDownloads();
}

void WebEngineHost::endService()
{
    for (WebProfile* profile : profiles())
        profile->endService();
}

void WebEngineHost::deleteData(const BrowserData& data)
{
    // The ordinary one, which says what has been done, comes last.
    const std::vector<WebProfile*> all = profiles();
    std::for_each(all.rbegin(), all.rend(),
                  [&data](WebProfile* profile) { profile->services()->deleteData(data); });
}
