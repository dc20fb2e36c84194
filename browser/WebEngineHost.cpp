#include "browser/WebEngineHost.h"

#include "browser/WebEnginePage.h"

#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>
#include <QWebEngineSettings>

using namespace Qt::StringLiterals;

WebEngineHost::WebEngineHost(const QString& dataFolder, const QString& cacheFolder,
                             AddressResolver resolve)
    : m_resolve(std::move(resolve)), m_profile(std::make_unique<QWebEngineProfile>(u"Tessera"_s)),
      m_pages(std::make_unique<QObject>())
{
    m_profile->setPersistentStoragePath(dataFolder);
    m_profile->setCachePath(cacheFolder);
    applySettings();
    refuseDownloads();
    addReportScript();
}

WebEngineHost::~WebEngineHost() = default;

EngineFactory WebEngineHost::factory()
{
    return [this](QWidget* parent) {
        auto* const page = new WebEnginePage(*m_profile, m_reports, m_pages.get());
        return std::make_unique<WebEngineControl>(parent, page, m_resolve);
    };
}

void WebEngineHost::applySettings()
{
    m_profile->setHttpAcceptLanguage(u"de-DE,de,en"_s);
    QWebEngineSettings& settings = *m_profile->settings();
    settings.setAttribute(QWebEngineSettings::PluginsEnabled, true);
    settings.setAttribute(QWebEngineSettings::PdfViewerEnabled, true);
    settings.setAttribute(QWebEngineSettings::FullScreenSupportEnabled, true);
    settings.setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, true);
    // Exported files are in this encoding and say so nowhere.
    settings.setDefaultTextEncoding(u"windows-1252"_s);
}

void WebEngineHost::refuseDownloads()
{
    // Nothing is written to the disk that nobody has asked the user about.
    QObject::connect(m_profile.get(), &QWebEngineProfile::downloadRequested, m_profile.get(),
                     [](QWebEngineDownloadRequest* download) { download->cancel(); });
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
