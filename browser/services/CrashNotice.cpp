#include "browser/services/CrashNotice.h"

#include "browser/WebEnginePage.h"
#include "browser/services/CrashOverlay.h"

#include <QPointer>
#include <QTimer>
#include <QWebEngineView>

using namespace Qt::StringLiterals;

namespace {

QString reason(QWebEnginePage::RenderProcessTerminationStatus status, int exitCode)
{
    const QString what = status == QWebEnginePage::KilledTerminationStatus
                             ? u"Der Prozess der Seite wurde beendet (%1)."_s
                             : u"Der Prozess der Seite ist unerwartet zu Ende gegangen (%1)."_s;
    return what.arg(exitCode);
}

} // namespace

CrashNotice::CrashNotice(WebEnginePage& page, QWebEngineView* view, QObject* parent)
    : QObject(parent)
{
    const QPointer<CrashOverlay> overlay = new CrashOverlay(view);
    connect(&page, &QWebEnginePage::renderProcessTerminated, overlay,
            [overlay](QWebEnginePage::RenderProcessTerminationStatus status, int exitCode) {
                if (status != QWebEnginePage::NormalTerminationStatus) {
                    overlay->appear(reason(status, exitCode));
                }
            });
    // A load that was on its way already comes to its end in a new process.
    connect(&page, &WebEnginePage::frameReported, overlay, &CrashOverlay::vanish);
    connect(&page, &QWebEnginePage::loadStarted, overlay, &CrashOverlay::vanish);
    connect(overlay, &CrashOverlay::reloadWanted, &page, [&page] {
        QTimer::singleShot(0, &page, [&page] {
            emit page.userNavigates();
            page.triggerAction(QWebEnginePage::Reload);
        });
    });
}
