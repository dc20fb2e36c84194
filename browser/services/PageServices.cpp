#include "browser/services/PageServices.h"

#include "browser/WebEnginePage.h"
#include "browser/services/PageContextMenu.h"
#include "browser/services/PageFind.h"
#include "browser/services/PageFullScreen.h"
#include "browser/services/PageKeys.h"
#include "browser/services/PagePrinter.h"
#include "browser/services/PageZoom.h"
#include "browser/services/PdfWatch.h"
#include "browser/services/ProfileServices.h"

#include <QWebEngineView>

PageServices::PageServices(Shell& shell, ProfileServices& profile, QWidget* window,
                           QWebEngineView* view, WebEnginePage* page)
    : QObject(page)
{
    auto* const pdf = new PdfWatch(page);
    auto* const find = new PageFind(window, view, page);
    auto* const zoom = new PageZoom(page, *pdf);
    auto* const printer = new PagePrinter(shell, window, view, page, *pdf);
    auto* const fullScreen = new PageFullScreen(window, view, page);

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
    commands.isIdle = [zoom](PageMenuItem item) {
        return item == PageMenuItem::ZoomReset && !zoom->canReset();
    };
    auto* const menu = new PageContextMenu(shell, page, commands);

    zoom->serve(window, view);
    menu->serve(view);
    connect(printer, &PagePrinter::starting, fullScreen, &PageFullScreen::leave);
    connect(fullScreen, &PageFullScreen::entered, this, [zoom, menu](QWebEngineView* screen) {
        zoom->serve(screen, screen);
        menu->serve(screen);
    });
    addPageKeys(window, {Qt::CTRL | Qt::Key_J}, &profile, [&profile] { profile.showDownloads(); });
    addPageKeys(window, {Qt::CTRL | Qt::SHIFT | Qt::Key_Delete}, &profile,
                [&profile] { profile.showBrowserData(); });
}
