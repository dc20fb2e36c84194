#include "engine/WebEngineHost.h"

#include "engine/DarkPages.h"
#include "engine/EngineFlags.h"
#include "engine/EngineStart.h"
#include "engine/PageServices.h"
#include "engine/ProfileServices.h"
#include "engine/asking/PermissionRequests.h"
#include "engine/page/WebEnginePage.h"
#include "engine/viewing/SpellCheck.h"
#include "pages/asking/PromptSession.h"
#include "pages/viewing/StoredWebData.h"

#include <QQuickWidget>
#include <QTimer>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::seconds afterTheStart(2);

std::unique_ptr<QWebEngineProfile> makeProfile()
{
    // The first profile starts the engine.
    announceDictionaries();
    announceAssistiveTools();
    announceDarkDesktop();
    // A local page shows its pictures and styles, but reads no other local file. The
    // profile's own switch for that, when it is off, takes the pictures and styles away,
    // too (seen with Qt 6.4), so it stays on and the part that draws the pages is told.
    addPageSwitch("allowFileAccessFromFileURLs=false");
    return std::make_unique<QWebEngineProfile>(u"Tessera"_s);
}

/// The first page in a window that is already there makes the toolkit replace it by one
/// that the engine can draw into, without the state, the place and the flags that it had
/// (seen with Qt 6.4.2). A window that has held such a child from the start stays.
void prepareForPages(QWidget& frame)
{
    auto* const child = new QQuickWidget(&frame);
    child->setObjectName(u"firstPageSurface"_s);
    child->resize(0, 0);
    child->hide();
}
} // namespace

WebEngineHost::WebEngineHost(const QString& dataFolder, const QString& cacheFolder,
                             AddressResolver resolve)
    : m_resolve(std::move(resolve)), m_prompts(std::make_unique<PromptSession>()),
      m_profile(makeProfile()), m_pages(std::make_unique<QObject>())
{
    removeMarkedWebData(dataFolder);
    m_profile->setPersistentStoragePath(dataFolder);
    m_profile->setCachePath(cacheFolder);
    applySettings();
    addReportScript();
    // The dictionaries would hold up the first page.
    QTimer::singleShot(afterTheStart, m_profile.get(), [this] { startSpellCheck(*m_profile); });
}

WebEngineHost::~WebEngineHost() = default;

EngineFactory WebEngineHost::factory()
{
    return [this](QWidget* parent) {
        auto* const page = new WebEnginePage(*m_profile, m_reports, m_pages.get());
        auto engine =
            std::make_unique<WebEngineControl>(parent, page, m_resolve, m_prompts->popups);
        new PageServices(*m_shell, *m_services, *m_prompts, parent, engine->view(),
                         page); // its own
        return engine;
    };
}

void WebEngineHost::serve(Shell& shell, QWidget* frame)
{
    m_shell = &shell;
    m_services = std::make_unique<ProfileServices>(shell, frame, *m_profile, *m_prompts);
    prepareForPages(*frame);
    QObject::connect(m_services.get(), &ProfileServices::permissionsForgotten, m_services.get(),
                     [this] {
                         PermissionRequests::forget(*m_profile, m_prompts->permissions);
                         m_prompts->forgetAnswers();
                     });
}

bool WebEngineHost::mayEnd()
{
    return !m_services || m_services->mayEnd();
}

void WebEngineHost::endService()
{
    m_services.reset();
}

void WebEngineHost::applySettings()
{
    m_profile->setHttpAcceptLanguage(u"de-DE,de,en"_s);
    QWebEngineSettings& settings = *m_profile->settings();
    settings.setAttribute(QWebEngineSettings::PluginsEnabled, true);
    settings.setAttribute(QWebEngineSettings::PdfViewerEnabled, true);
    settings.setAttribute(QWebEngineSettings::FullScreenSupportEnabled, true);
    settings.setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, true);
    settings.setAttribute(QWebEngineSettings::ScreenCaptureEnabled, true); // the user is asked
    settings.setAttribute(QWebEngineSettings::PlaybackRequiresUserGesture, true);
    settings.setUnknownUrlSchemePolicy(
        QWebEngineSettings::AllowUnknownUrlSchemesFromUserInteraction);
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    // What the user allows holds for this run.
    m_profile->setPersistentPermissionsPolicy(
        QWebEngineProfile::PersistentPermissionsPolicy::AskEveryTime);
#endif
    // Exported files are in this encoding and say so nowhere.
    settings.setDefaultTextEncoding(u"windows-1252"_s);
    // Called in a thread of the engine's.
    m_profile->cookieStore()->setCookieFilter(
        [](const QWebEngineCookieStore::FilterRequest& request) { return !request.thirdParty; });
}

void WebEngineHost::addReportScript()
{
    QWebEngineScript script;
    script.setName(u"reports"_s);
    script.setSourceCode(m_reports.script());
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    script.setRunsOnSubFrames(true);
    m_profile->scripts()->insert(script);
}
