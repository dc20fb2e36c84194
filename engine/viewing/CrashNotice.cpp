#include "engine/viewing/CrashNotice.h"

#include "engine/page/WebEnginePage.h"
#include "pages/viewing/CrashOverlay.h"

#include <QPointer>
#include <QTimer>
#include <QWebEngineView>

#include <sys/wait.h>

using namespace Qt::StringLiterals;

namespace {

/// `status` is the system's own (wait), as the engine hands it on.
QString reason(int status)
{
    const QString what = u"Der Prozess der Seite wurde unerwartet beendet (%1)."_s;
    return what.arg(WIFSIGNALED(status) ? u"Signal %1"_s.arg(WTERMSIG(status))
                                        : u"Code %1"_s.arg(WEXITSTATUS(status)));
}

} // namespace

CrashNotice::CrashNotice(WebEnginePage& page, QWebEngineView* view, QObject* parent)
    : QObject(parent)
{
    const QPointer<CrashOverlay> overlay = new CrashOverlay(view);
    connect(&page, &QWebEnginePage::renderProcessTerminated, overlay,
            [overlay](QWebEnginePage::RenderProcessTerminationStatus status, int exitCode) {
                if (status != QWebEnginePage::NormalTerminationStatus)
                    overlay->appear(reason(exitCode));
            });
    // A load that was on its way already comes to its end in a new process.
    connect(&page, &WebEnginePage::frameReported, overlay, &CrashOverlay::vanish);
    connect(&page, &QWebEnginePage::loadStarted, overlay, &CrashOverlay::vanish);
    connect(overlay, &CrashOverlay::reloadWanted, &page,
            [&page] { QTimer::singleShot(0, &page, [&page] { page.reload(); }); });
}
