// What pages cost that nobody sees: the processor time of eight animated pages, one of them
// maximised over the others, as a share of what that one takes alone, and that of thirty pages
// with timers that sleep behind a page without any. Needs a display.
#include "app/GermanTexts.h"
#include "bench/BenchShell.h"
#include "bench/PrivateFolders.h"
#include "bench/ProcessTree.h"
#include "bench/Report.h"
#include "bench/Waiting.h"

#include <QApplication>
#include <QFile>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60000;
constexpr int settling = 4000; // longer than any single shot of the shell
constexpr int span = 8000;
constexpr int runs = 5;
constexpr int animated = 8;
constexpr int sleeping = 30;
/// In place of the five minutes of the program.
constexpr std::chrono::seconds sleepAfter(20);

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

/// In hundredths of a core.
double processorShare()
{
    const QList<qint64> processes = processTree(QCoreApplication::applicationPid());
    const double before = processorTimeOf(processes);
    runFor(span);
    return (processorTimeOf(processes) - before) * 100 * 1000 / span;
}

void measureCovered(Report& report, MDIForm1& frame, const QString& address)
{
    open(frame, address, 1);
    const Medians shares = interleaved(
        runs,
        [&] {
            open(frame, address, animated - 1);
            const double share = processorShare();
            close(frame, animated - 1);
            frame.activeBrowser()->showMaximized();
            return share;
        },
        [&] {
            runFor(settling);
            return processorShare();
        });
    close(frame, 1);
    report.ratio(u"CPU, %1 animated pages, one over the others"_s.arg(animated),
                 u"that one alone"_s, shares.ours, shares.bare, u"%"_s, 1.05);
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
        const QString moving = page(folders, u"moving.html"_s,
                                    "let n = 0; const draw = () => { box.style.background = "
                                    "`hsl(${++n % 360}, 80%, 50%)`; requestAnimationFrame(draw) };"
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
