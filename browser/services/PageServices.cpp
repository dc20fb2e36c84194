#include "browser/services/PageServices.h"

#include "browser/WebEnginePage.h"
#include "browser/services/ProfileServices.h"

#include <QShortcut>
#include <QWidget>

namespace {

void addKey(QWidget* window, const QKeySequence& key, ProfileServices& profile,
            void (ProfileServices::*command)())
{
    auto* const shortcut = new QShortcut(key, window);
    shortcut->setContext(Qt::WidgetWithChildrenShortcut);
    QObject::connect(shortcut, &QShortcut::activated, &profile, command);
}

} // namespace

PageServices::PageServices(Shell& /*shell*/, ProfileServices& profile, QWidget* window,
                           QWebEngineView* /*view*/, WebEnginePage* page)
    : QObject(page)
{
    addKey(window, Qt::CTRL | Qt::Key_J, profile, &ProfileServices::showDownloads);
    addKey(window, Qt::CTRL | Qt::SHIFT | Qt::Key_Delete, profile,
           &ProfileServices::showBrowserData);
}
