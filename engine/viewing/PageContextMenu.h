#pragma once

#include "pages/viewing/PageMenu.h"

#include <QObject>

class QWebEngineContextMenuRequest;
class QWebEngineView;
class Shell;
class WebEnginePage;

/// The context menu of a page, in the place of the engine's own, which is not in German.
class PageContextMenu : public QObject {
    Q_OBJECT
public:
    /// Belongs to `page`. `services` are the commands of the page's other services; those that
    /// the engine carries out are added here.
    PageContextMenu(Shell& shell, WebEnginePage* page, const PageMenuCommands& services);

    /// Makes `view`, while it shows the page, open this menu.
    void attachTo(QWebEngineView* view);

private:
    void open(QWebEngineView* view, const QPoint& place);
    PageMenuTarget targetOf(const QWebEngineContextMenuRequest& request) const;
    PageMenuCommands commandsFor(const QWebEngineContextMenuRequest& request);

    Shell& m_shell;
    WebEnginePage* m_page;
    PageMenuCommands m_services;
};
