#pragma once

#include "pages/viewing/PageMenu.h"

#include <QObject>

class QWebEngineContextMenuRequest;
class QWebEngineView;
class Shell;
class WebEnginePage;

/// The menu on the places of a page, in the place of the engine's own.
class PageContextMenu : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`. `services` is what other services of the page offer;
    /// what the engine itself can do is added.
    PageContextMenu(Shell& shell, WebEnginePage* page, const PageMenuCommands& services);

    /// Opens the menu in `view` from now on, while it shows the page.
    void serve(QWebEngineView* view);

private:
    void open(QWebEngineView* view, const QPoint& place);
    PageMenuTarget targetOf(const QWebEngineContextMenuRequest& request) const;
    PageMenuCommands commandsFor(const QWebEngineContextMenuRequest& request);

    Shell& m_shell;
    WebEnginePage* m_page;
    PageMenuCommands m_services;
};
