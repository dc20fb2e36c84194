// What pages cost that nobody sees: the processor time of eight animated pages, one of them
// maximised over the others, for each frame that this one draws, as a share of what a frame
// takes when it is alone; and that of thirty pages with timers that sleep behind a page without
// any. Needs a display.
#include "app/GermanTexts.h"
#include "bench/BenchShell.h"
#include "bench/PrivateFolders.h"
#include "bench/ProcessTree.h"
#include "bench/Report.h"
#include "bench/Waiting.h"

#include <QApplication>
#include <QFile>
#include <QUrl>
#include <QWebEnginePage>
#include <QWebEngineView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60000;
constexpr int settling = 6000; // new processes have work left after a load
constexpr int span = 10000;
constexpr int runs = 5;
constexpr int animated = 8;
constexpr int sleeping = 30;
/// In place of the five minutes of the program.
constexpr std::chrono::seconds sleepAfter(25);

/// Writes a page, and returns its address.
QString page(const PrivateFolders& folders, const QString& name, const QByteArray& script)
{
    QFile file(folders.path(name));
    const QByteArray html = "<!DOCTYPE html><title>Seite</title><p>Seite<div id=box style='width:"
                            "200px;height:200px'></div><script>" +
                            script + "</script>";
    if (!file.open(QIODevice::WriteOnly) || file.write(html) < 0)
        throw BenchError("the page cannot be written");
    return QUrl::fromLocalFile(file.fileName()).toString();
}

void open(MDIForm1& frame, const QString& address, int windows)
{
    for (int i = 0; i < windows; ++i)
        frame.VisitUrl(address);
    if (!runUntil([&] { return !isBusy(frame); }, patience))
        throw BenchError("the windows did not load");
    frame.activeBrowser()->showMaximized();
    runFor(settling);
}

void close(MDIForm1& frame, int windows)
{
    for (int i = 0; i < windows; ++i)
        frame.activeBrowser()->closeUnasked();
    runFor(settling);
}

/// In seconds, while `span` passes.
double processorTime()
{
    const QList<qint64> processes = processTree(QCoreApplication::applicationPid());
    const double before = processorTimeOf(processes);
    runFor(span);
    return processorTimeOf(processes) - before;
}

/// In hundredths of a core.
double processorShare()
{
    return processorTime() * 100 * 1000 / span;
}

/// How many frames the page of the active window has drawn so far.
int framesOf(const MDIForm1& frame)
{
    int frames = -1;
    const auto* const view = frame.activeBrowser()->findChild<QWebEngineView*>();
    view->page()->runJavaScript(u"drawn"_s, [&](const QVariant& value) { frames = value.toInt(); });
    if (!runUntil([&] { return frames >= 0; }, patience))
        throw BenchError("the page does not answer");
    return frames;
}

/// Of one frame of the active page, in milliseconds. A busy machine draws fewer frames, so that
/// the time alone would tell nothing.
double costOfFrame(const MDIForm1& frame)
{
    const int before = framesOf(frame);
    const double time = processorTime();
    return time * 1000 / std::max(1, framesOf(frame) - before);
}

void measureCovered(Report& report, MDIForm1& frame, const QString& address)
{
    open(frame, address, 1);
    const Medians costs = interleaved(
        runs,
        [&] {
            open(frame, address, animated - 1);
            const double cost = costOfFrame(frame);
            close(frame, animated - 1);
            frame.activeBrowser()->showMaximized();
            return cost;
        },
        [&] {
            runFor(settling);
            return costOfFrame(frame);
        });
    close(frame, 1);
    report.ratio(u"CPU a frame, %1 animated pages, one on top"_s.arg(animated), u"that one alone"_s,
                 costs.ours, costs.bare, u"ms"_s, 1.05);
}

void measureSleeping(Report& report, MDIForm1& frame, const QString& busy, const QString& still)
{
    open(frame, busy, sleeping);
    open(frame, still, 1);
    const double awake = processorShare();
    runFor(static_cast<int>(std::chrono::milliseconds(sleepAfter).count()) + settling);
    report.value(u"CPU, %1 hidden pages with timers, asleep"_s.arg(sleeping), processorShare(),
                 u"%"_s, 1);
    report.value(u"the same, as long as they are awake"_s, awake, u"%"_s);
}

} // namespace

int main(int argc, char** argv)
{
    return Report::run([&](Report& report) {
        const PrivateFolders folders;
        const QApplication application(argc, argv);
        installGermanTexts();
        BenchShell shell(folders.path({}), sleepAfter);
        const QString still = page(folders, u"still.html"_s, {});
        const QString moving =
            page(folders, u"moving.html"_s,
                 "var drawn = 0; const draw = () => { box.style.background = "
                 "`hsl(${++drawn % 360}, 80%, 50%)`; requestAnimationFrame(draw) };"
                 "draw()");
        const QString busy = page(folders, u"busy.html"_s,
                                  "let n = 0; setInterval(() => { for (let i = 0; i < 1e6; ++i) "
                                  "n += i; box.title = n }, 50)");
        shell.module().Main(still);
        runUntil([&] { return shell.frame().isVisible(); }, patience);
        close(shell.frame(), 1);
        measureCovered(report, shell.frame(), moving);
        measureSleeping(report, shell.frame(), busy, still);
    });
}
