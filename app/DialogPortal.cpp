#include "app/DialogPortal.h"

#include "engine/page/SessionBus.h"

#include <QApplication>
#include <QFileDialog>

using namespace Qt::StringLiterals;

namespace {
void useDesktopDialogs(bool isWanted)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, !isWanted);
}
} // namespace

DialogPortal::DialogPortal()
{
    // Other themes have dialogs that need no portal.
    if (!qEnvironmentVariable("QT_QPA_PLATFORMTHEME").startsWith(u"xdgdesktopportal"_s))
        return;
    const std::optional<QDBusConnection> bus = sessionBus();
    if (!bus)
        return;
    m_watcher.setConnection(*bus);
    m_watcher.addWatchedService(u"org.freedesktop.portal.Desktop"_s);
    connect(&m_watcher, &QDBusServiceWatcher::serviceRegistered, this,
            [] { useDesktopDialogs(true); });
    connect(&m_watcher, &QDBusServiceWatcher::serviceUnregistered, this, [] {
        useDesktopDialogs(false);
        auto* const open = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (open != nullptr && !open->testOption(QFileDialog::DontUseNativeDialog))
            open->reject();
    });
}
