#include "engine/WebProfile.h"

#include "base/OpenFiles.h"
#include "base/Shell.h"
#include "engine/PageServices.h"
#include "engine/ProfileServices.h"
#include "engine/page/WebEnginePage.h"
#include "pages/viewing/SpellDictionaries.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QIcon>
#include <QLocale>
#include <QTimer>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

#include <thread>

using namespace Qt::StringLiterals;

namespace {

/// How long after the profile is made the dictionaries are loaded: sooner they would hold up
/// its first page.
constexpr std::chrono::seconds dictionaryDelay(2);

/// Whether the engine asks a server or the disk for the document at `url`.
bool isFetched(const QUrl& url)
{
    return url.isLocalFile() || url.scheme() == "http"_L1 || url.scheme() == "https"_L1;
}

/// How long a navigation that is begun ahead is waited for at most.
constexpr std::chrono::milliseconds untilStarted(50);

/// The frame as the services of a profile see it: whatever opens a window for one of its pages
/// opens one of the same kind.
class ProfileShell : public Shell {
public:
    ProfileShell(Shell& frame, bool isPrivate) : m_frame(frame), m_isPrivate(isPrivate) {}

    void VisitUrl(const QString& url) override
    {
        if (m_isPrivate)
            m_frame.VisitUrlPrivately(url);
        else
            m_frame.VisitUrl(url);
    }
    void VisitUrlPrivately(const QString& url) override { m_frame.VisitUrlPrivately(url); }
    void AddToArchive(const QString& title, const QString& url) override
    {
        m_frame.AddToArchive(title, url);
    }
    void AddPageToArchive() override { m_frame.AddPageToArchive(); }
    void HistoryUrl(const QString& url) override { m_frame.HistoryUrl(url); }
    void importBookmarks(const BookmarkFile& file) override { m_frame.importBookmarks(file); }
    void bIsOpenBook(bool value) override { m_frame.bIsOpenBook(value); }
    void bIsOpenHistory(bool value) override { m_frame.bIsOpenHistory(value); }
    void StatusBarCurr(bool value) override { m_frame.StatusBarCurr(value); }
    void SetDropDisabled(bool disable) override { m_frame.SetDropDisabled(disable); }
    void statusText(const QString& text) override { m_frame.statusText(text); }
    void addStatusSign(QWidget* sign) override { m_frame.addStatusSign(sign); }
    void wouldLose(const QObject* who, const QString& what) override
    {
        m_frame.wouldLose(who, what);
    }
    Prefer& preferences() override { return m_frame.preferences(); }
    Prompt& prompt() override { return m_frame.prompt(); }
    const QString& programFolder() const override { return m_frame.programFolder(); }
    const QString& dataFolder() const override { return m_frame.dataFolder(); }
    const QString& title() const override { return m_frame.title(); }
    QIcon frameIcon() const override { return m_frame.frameIcon(); }
    SiteIcons& icons() override { return m_frame.icons(); }

private:
    Shell& m_frame;
    bool m_isPrivate;
};

/// The engine stores what it still holds in threads of its own, after the profile has gone, and
/// the last cookies are lost if the program ends meanwhile (seen with Qt 6.8 on a busy machine,
/// 4 times of 70). It closes the files of `folder` when it is done: usually after 10 ms.
void waitUntilStored(const QString& folder)
{
    constexpr std::chrono::seconds atMost(5);
    constexpr std::chrono::milliseconds pause(2);
    for (const QDeadlineTimer end(atMost); hasOpenFileIn(folder) && !end.hasExpired();) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        std::this_thread::sleep_for(pause);
    }
}

} // namespace

WebProfile::WebProfile(std::unique_ptr<QWebEngineProfile> profile, const Surroundings& surroundings)
    : m_surroundings(surroundings), m_session(surroundings.turns), m_profile(std::move(profile)),
      m_pages(std::make_unique<QObject>())
{
    applySettings();
    addReportScript();
    QTimer::singleShot(dictionaryDelay, this, &WebProfile::startSpellCheck);
}

WebProfile::~WebProfile()
{
    const QString folder =
        m_profile->isOffTheRecord() ? QString() : m_profile->persistentStoragePath();
    m_services.reset();
    dropBegun();
    m_pages.reset();
    m_profile.reset();
    if (!folder.isEmpty())
        waitUntilStored(folder);
}

void WebProfile::serve(Shell& shell, QWidget* frame, const QString& dataFolder)
{
    m_shell = std::make_unique<ProfileShell>(shell, m_profile->isOffTheRecord());
    m_services =
        std::make_unique<ProfileServices>(*m_shell, frame, *m_profile, m_session, dataFolder);
}

std::unique_ptr<WebEngineControl> WebProfile::newEngine(QWidget* parent)
{
    auto* const page = new WebEnginePage(*m_profile, m_surroundings.reports, m_pages.get());
    return std::make_unique<WebEngineControl>(parent, page, m_surroundings.resolve, m_session,
                                              m_surroundings.sleepAfter);
}

void WebProfile::begin(const QString& address)
{
    m_nowhere = std::make_unique<QWidget>();
    m_begun = newEngine(m_nowhere.get());
    // The engine goes on when it gets a turn of the event loop, and the next one would come only
    // when the frame has been made, shown and painted. Until then the server can answer, and the
    // process that draws the page can start.
    QEventLoop start;
    connect(
        m_begun->page(), &WebEnginePage::navigationStarting, &start,
        [&start](const QUrl& url) {
            if (!isFetched(url))
                start.quit();
        },
        Qt::QueuedConnection);
    connect(m_begun->page(), &WebEnginePage::documentWanted, &start, &QEventLoop::quit,
            Qt::QueuedConnection);
    QTimer::singleShot(untilStarted, &start, &QEventLoop::quit);
    if (m_begun->begin(address))
        start.exec(QEventLoop::ExcludeUserInputEvents);
    QTimer::singleShot(0, this, &WebProfile::dropBegun);
}

void WebProfile::dropBegun()
{
    m_begun.reset();
    m_nowhere.reset();
}

std::unique_ptr<WebEngineControl> WebProfile::nextEngine(QWidget* parent)
{
    if (!m_begun)
        return newEngine(parent);
    m_begun->host()->setParent(parent);
    return std::move(m_begun);
}

std::unique_ptr<EngineControl> WebProfile::makeEngine(QWidget* parent)
{
    auto engine = nextEngine(parent);
    // The services belong to the page.
    new PageServices(*m_shell, *m_services, m_session, m_surroundings.resolve.search, parent,
                     engine->view(), engine->page());
    ++m_engines;
    connect(engine.get(), &QObject::destroyed, this, [this] {
        if (--m_engines == 0)
            emit abandoned();
    });
    return engine;
}

void WebProfile::endService()
{
    m_services.reset();
}

bool WebProfile::isUnused() const
{
    return m_engines == 0 && (!m_services || m_services->dropIdleList()) &&
           m_pages->children().isEmpty();
}

void WebProfile::applySettings()
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
    // What the user allows holds for this run. With AskEveryTime the engine would still remember
    // it for each page, but list nothing of it, so that it could not be taken back (seen with
    // Qt 6.8).
    m_profile->setPersistentPermissionsPolicy(
        QWebEngineProfile::PersistentPermissionsPolicy::StoreInMemory);
#endif
    // For pages without one of their own; of exported files see ExportEncoding.
    settings.setDefaultTextEncoding(u"windows-1252"_s);
    // The filter is called in a thread of the engine's.
    m_profile->cookieStore()->setCookieFilter(
        [](const QWebEngineCookieStore::FilterRequest& request) { return !request.thirdParty; });
}

void WebProfile::startSpellCheck()
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

void WebProfile::addReportScript()
{
    QWebEngineScript script;
    script.setName(u"reports"_s);
    script.setSourceCode(m_surroundings.reports.script());
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    script.setRunsOnSubFrames(true);
    m_profile->scripts()->insert(script);
}
