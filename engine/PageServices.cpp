#include "engine/PageServices.h"

#include "engine/ProfileServices.h"
#include "engine/asking/CertificateErrors.h"
#include "engine/asking/DesktopLinks.h"
#include "engine/asking/FormResending.h"
#include "engine/asking/LogInRequests.h"
#include "engine/asking/PermissionRequests.h"
#include "engine/asking/ScriptDialogs.h"
#include "engine/page/WebEnginePage.h"
#include "engine/viewing/ExportEncoding.h"
#include "engine/viewing/HangWatch.h"
#include "engine/viewing/NetworkReturn.h"
#include "engine/viewing/PageBookmarks.h"
#include "engine/viewing/PageContextMenu.h"
#include "engine/viewing/PageFind.h"
#include "engine/viewing/PageFullScreen.h"
#include "engine/viewing/PageInspector.h"
#include "engine/viewing/PagePrinter.h"
#include "engine/viewing/PageZoom.h"
#include "engine/viewing/PdfWatch.h"
#include "pages/viewing/CrashOverlay.h"
#include "pages/viewing/PageKeys.h"

#include <QAction>
#include <QTimer>
#include <QWebEngineSettings>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {

/// How long after input a page may write into the clipboard: as long as the engine, too,
/// takes what a page does for the user's wish.
constexpr std::chrono::seconds inputLasts(5);

/// Lets `page` write into the clipboard when its user has just clicked or typed in it, and
/// never by itself. The engine's switch lets a page write at any time, with or without a
/// click (seen with Qt 6.4), so it is on only for a while after each. Reading is another
/// matter: there the user is asked, or the engine refuses.
void allowClipboardAfterInput(QWebEnginePage& page, const PageInput& input)
{
    const auto allow = [&page](bool isAllowed) {
        page.settings()->setAttribute(QWebEngineSettings::JavascriptCanAccessClipboard, isAllowed);
    };
    auto* const timer = new QTimer(&page);
    timer->setSingleShot(true);
    QObject::connect(timer, &QTimer::timeout, &page, [allow] { allow(false); });
    const auto begin = [allow, timer] {
        if (!timer->isActive())
            allow(true);
        timer->start(inputLasts);
    };
    QObject::connect(&input, &PageInput::pressed, timer, begin);
    QObject::connect(&input, &PageInput::used, timer, begin);
}

/// Where the engine shows the source of `page`; empty if it has none to show.
QString sourceAddress(const QWebEnginePage& page)
{
    const bool hasSource = page.action(QWebEnginePage::ViewSource)->isEnabled();
    return hasSource ? u"view-source:"_s + page.url().toString(QUrl::FullyEncoded) : QString();
}

} // namespace

PageServices::PageServices(Shell& shell, ProfileServices& profile, PromptSession& session,
                           SearchResolver search, QWidget* window, QWebEngineView* view,
                           WebEnginePage* page)
    : QObject(page), m_page(page), m_prompt(session, shell, window, *page),
      m_search(std::move(search))
{
    makeAsking();
    coverCrashes(view);
    makeViewing(shell, profile, window, view);
    useProfile(profile, window);
}

void PageServices::makeAsking()
{
    new LogInRequests(m_prompt, this);
    new CertificateErrors(m_prompt, this);
    new PermissionRequests(m_prompt, this);
    new ScriptDialogs(m_prompt, this);
    new FormResending(m_prompt, this);
    new DesktopLinks(m_prompt, m_input, this);
    allowClipboardAfterInput(*m_page, m_input);
}

void PageServices::coverCrashes(QWebEngineView* view)
{
    auto* const overlay = new CrashOverlay(view); // goes with the view, maybe before the page
    connect(m_page, &QWebEnginePage::renderProcessTerminated, overlay,
            [overlay](QWebEnginePage::RenderProcessTerminationStatus status, int exitCode) {
                if (status != QWebEnginePage::NormalTerminationStatus)
                    overlay->appear(exitCode);
            });
    connect(m_page, &WebEnginePage::endedByUser, overlay, &CrashOverlay::expectEnd);
    // A load that was on its way already comes to its end in a new process, without a start.
    connect(m_page, &WebEnginePage::frameReported, overlay, &CrashOverlay::vanish);
    connect(m_page, &QWebEnginePage::loadStarted, overlay, &CrashOverlay::vanish);
    connect(overlay, &CrashOverlay::reloadWanted, m_page,
            [page = m_page] { QTimer::singleShot(0, page, [page] { page->reload(); }); });
}

void PageServices::makeViewing(Shell& shell, ProfileServices& profile, QWidget* window,
                               QWebEngineView* view)
{
    new ExportEncoding(m_page);
    new NetworkReturn(m_page);
    auto* const pdf = new PdfWatch(m_page);
    auto* const find = new PageFind(m_page);
    auto* const zoom = new PageZoom(m_page, *pdf, profile.zooms());
    auto* const printer = new PagePrinter(shell, window, view, m_prompt, m_input, *pdf);
    auto* const fullScreen = new PageFullScreen(window, view, m_page);

    auto* const hangs = new HangWatch(m_page, view, m_input);
    connect(hangs, &HangWatch::found, fullScreen, &PageFullScreen::leave);

    PageMenuCommands commands;
    commands.items = {
        {PageMenuItem::Find, [find] { find->open(); }},
        {PageMenuItem::Print, [printer] { printer->print(); }},
        {PageMenuItem::SavePdf, [printer] { printer->savePdf(); }},
        {PageMenuItem::ZoomIn, [zoom] { zoom->zoomIn(); }},
        {PageMenuItem::ZoomOut, [zoom] { zoom->zoomOut(); }},
        {PageMenuItem::ZoomReset, [zoom] { zoom->reset(); }},
        {PageMenuItem::Downloads, [&profile] { profile.showDownloads(); }},
        {PageMenuItem::BrowserData, [&profile] { profile.showBrowserData(); }},
    };
    commands.search = [this, &shell](const QString& text) { search(shell, text); };
    commands.isDisabled = [zoom](PageMenuItem item) {
        return item == PageMenuItem::ZoomReset && !zoom->canReset();
    };
    auto* const menu = new PageContextMenu(shell, m_page, commands);

    auto* const inspector = new PageInspector(shell, m_page);
    addPageKeys(window, {Qt::Key_F12}, inspector, [inspector] { inspector->toggle(); });
    addPageKeys(window, {Qt::CTRL | Qt::Key_S}, m_page,
                [page = m_page] { page->triggerAction(QWebEnginePage::SavePage); });
    addPageKeys(window, {Qt::CTRL | Qt::Key_U}, m_page,
                [&shell, page = m_page] { shell.VisitUrl(sourceAddress(*page)); });
    find->addKeys(window);
    (new PageBookmarks(shell, m_page, view))->addKeys(window);
    zoom->attachTo(window, view);
    menu->attachTo(view);
    m_input.watch(view);
    connect(printer, &PagePrinter::starting, fullScreen, &PageFullScreen::leave);
    connect(fullScreen, &PageFullScreen::entered, this,
            [this, find, zoom, menu](QWebEngineView* screen) {
                find->close();
                find->addKeys(screen);
                zoom->attachTo(screen, screen);
                menu->attachTo(screen);
                m_input.watch(screen);
            });
    connect(fullScreen, &PageFullScreen::leaving, find, &PageFind::close);
}

void PageServices::search(Shell& shell, const QString& text)
{
    const QUrl address = m_search(text);
    if (address.isValid())
        shell.VisitUrl(address.toString(QUrl::FullyEncoded));
    else
        m_prompt.ask({.title = u"Meldung"_s,
                      .text = u"In den Einstellungen steht keine Adresse einer Suchmaschine, die "
                              "sich öffnen lässt, oder der Text ist zu lang."_s});
}

void PageServices::useProfile(ProfileServices& profile, QWidget* window)
{
    WebDownloads& downloads = profile.downloads();
    connect(m_page, &WebEnginePage::userNavigates, &downloads, [&downloads, page = m_page] {
        downloads.forgetRefusals(page);
        downloads.forgetRefusals(nullptr);
    });
    connect(m_page, &QObject::destroyed, &downloads, &WebDownloads::forgetRefusals);
    addPageKeys(window, {Qt::CTRL | Qt::Key_J}, &profile, [&profile] { profile.showDownloads(); });
    addPageKeys(window, {Qt::CTRL | Qt::SHIFT | Qt::Key_Delete}, &profile,
                [&profile] { profile.showBrowserData(); });
}
