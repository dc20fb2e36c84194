#include "engine/WebEngineHost.h"

#include "address/SearchAddress.h"
#include "base/Errors.h"
#include "base/Prefer.h"
#include "base/Shell.h"
#include "engine/EngineStart.h"
#include "engine/PageServices.h"
#include "engine/ProfileServices.h"
#include "engine/page/WebEnginePage.h"
#include "pages/asking/PromptSession.h"
#include "pages/viewing/SpellDictionaries.h"
#include "pages/viewing/StoredWebData.h"

#include <QLocale>
#include <QQuickWidget>
#include <QTimer>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

using namespace Qt::StringLiterals;

namespace {

/// How long after the start the dictionaries are loaded: sooner they would hold up the
/// first page.
constexpr std::chrono::seconds dictionaryDelay(2);

std::unique_ptr<QWebEngineProfile> startEngine()
{
    prepareEngineStart();
    return std::make_unique<QWebEngineProfile>(u"Tessera"_s);
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
} // namespace

WebEngineHost::WebEngineHost(const QString& dataFolder, const QString& cacheFolder,
                             AddressResolver resolve, std::chrono::milliseconds sleepAfter)
    : m_resolve(std::move(resolve)), m_sleepAfter(sleepAfter),
      m_prompts(std::make_unique<PromptSession>()), m_profile(startEngine()),
      m_pages(std::make_unique<QObject>())
{
    removeMarkedWebData(dataFolder);
    m_profile->setPersistentStoragePath(dataFolder);
    m_profile->setCachePath(cacheFolder);
    applySettings();
    addReportScript();
    QTimer::singleShot(dictionaryDelay, m_profile.get(), [this] { startSpellCheck(); });
}

WebEngineHost::~WebEngineHost() = default;

EngineFactory WebEngineHost::factory()
{
    const SearchResolver search = [this](const QString& query) {
        QUrl engine;
        ignoringErrors([&] { engine = m_resolve(m_shell->preferences().SearchEngine()); });
        return searchAddress(engine, query);
    };
    return [this, search](QWidget* parent) {
        auto* const page = new WebEnginePage(*m_profile, m_reports, m_pages.get());
        auto engine = std::make_unique<WebEngineControl>(
            parent, page, WebEngineControl::Resolvers{m_resolve, search}, m_prompts->popups,
            m_sleepAfter);
        // The services belong to the page.
        new PageServices(*m_shell, *m_services, *m_prompts, search, parent, engine->view(), page);
        return engine;
    };
}

void WebEngineHost::serve(Shell& shell, QWidget* frame)
{
    m_shell = &shell;
    m_services = std::make_unique<ProfileServices>(shell, frame, *m_profile, *m_prompts);
    keepNativeWindow(*frame);
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
    // The filter is called in a thread of the engine's.
    m_profile->cookieStore()->setCookieFilter(
        [](const QWebEngineCookieStore::FilterRequest& request) { return !request.thirdParty; });
}

void WebEngineHost::startSpellCheck()
{
    const QStringList languages =
        spellLanguages(installedDictionaries(), QLocale::system().uiLanguages());
    // With an empty list of languages the engine writes a warning to the terminal (seen with
    // Qt 6.8).
    if (languages.isEmpty())
        return;
    m_profile->setSpellCheckLanguages(languages);
    m_profile->setSpellCheckEnabled(true);
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
