// How long the program takes from its start until a page has loaded in each of its
// windows, and how much memory it uses three seconds later, as shares of what a
// bare program around as many views takes. Many windows are also compared with the same
// without PaintPacer. The page tells its server when it has loaded. Usage: StartBench [runs
// [windows]]. Needs a display that nobody else works on; many windows need one of 1280 x 2300
// pixels.
#include "base/Prefer.h"
#include "base/Twips.h"
#include "bench/PrivateFolders.h"
#include "bench/ProcessTree.h"
#include "bench/Report.h"
#include "bench/Waiting.h"
#include "tests/e2e/LoopbackServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QSize>
#include <QTimer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 60000;
constexpr int settling = 3000;
constexpr size_t memoryRuns = 5; // memory varies less than time
constexpr int rest = 1500;       // the processes of the run before go, and the disk calms down

/// Room for many windows one under the other, the same on both sides.
constexpr QSize manyWindows(1200, 2184);

struct Program {
    QString path;
    QStringList arguments;
    std::vector<double> mebibytes = {};
};

void scriptPage(LoopbackServer& server)
{
    const QByteArray fresh = "Cache-Control: no-store\r\n";
    server.answer(u"/page.html"_s, {.body = "<!DOCTYPE html><title>Seite</title><p>Seite<script>"
                                            "onload = () => fetch('/loaded')</script>",
                                    .headers = fresh});
    server.answer(u"/loaded"_s, {.headers = fresh});
    server.answer(u"/favicon.ico"_s, {.status = 404, .headers = fresh});
}

/// Milliseconds until the page has loaded in all windows; notes the memory, too.
double run(Program& program, LoopbackServer& server, int windows)
{
    runFor(rest);
    QEventLoop loop;
    QElapsedTimer clock;
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    double time = -1;
    int missing = windows;
    const auto count =
        QObject::connect(&server, &LoopbackServer::requested, &loop, [&](const QString& path) {
            if (path != u"/loaded"_s || --missing != 0)
                return;
            time = static_cast<double>(clock.nsecsElapsed()) / 1e6;
            loop.quit();
        });
    QTimer::singleShot(patience, &loop, &QEventLoop::quit);
    clock.start();
    process.start(program.path, program.arguments);
    loop.exec();
    QObject::disconnect(count);
    if (time >= 0 && program.mebibytes.size() < memoryRuns) {
        runFor(settling);
        const Memory memory = memoryOf(processTree(process.processId()));
        program.mebibytes.push_back(static_cast<double>(memory.proportional) / 1024);
    }
    process.terminate();
    if (!process.waitForFinished(patience))
        process.kill();
    if (time < 0)
        throw BenchError("showed no page: " + program.path.toStdString());
    return time;
}

Program shellProgram(const PrivateFolders& folders, const QString& address, int windows)
{
    if (windows == 1)
        return {folders.copyProgram(), {address}};
    const QString folder = folders.path(u"shell"_s);
    QDir().mkdir(folder);
    Prefer preferences(folder);
    preferences.LoadPref();
    preferences.MdiWidth(toStoredTwips(manyWindows.width()));
    preferences.MdiHeight(toStoredTwips(manyWindows.height()));
    preferences.SavePref();
    return {QCoreApplication::applicationDirPath() + u"/ShellWindows"_s,
            {address, folder, QString::number(windows)}};
}

/// What it wins that the frame paces its paints. Much only where there is no graphics
/// processor.
void measurePacing(Report& report, int runs, Program paced, LoopbackServer& server, int windows)
{
    Program unpaced = paced;
    unpaced.arguments.append(u"unpaced"_s);
    const Medians times = interleaved(
        runs, [&] { return run(paced, server, windows); },
        [&] { return run(unpaced, server, windows); });
    report.ratio(u"%1 windows loaded"_s.arg(windows), u"the same without PaintPacer"_s, times.ours,
                 times.bare, u"ms"_s, 0.80);
}

void measure(Report& report, int runs, int windows)
{
    const PrivateFolders folders;
    LoopbackServer server;
    scriptPage(server);
    const QString address = server.address(u"/page.html"_s);
    Program bare{QCoreApplication::applicationDirPath() + u"/BareBrowser"_s,
                 {address, folders.path(u"bare"_s), QString::number(windows)}};
    Program shell = shellProgram(folders, address, windows);
    for (Program* program : {&bare, &shell}) {
        run(*program, server, windows); // fills the profile and the disk cache
        program->mebibytes.clear();
    }
    const Medians times = interleaved(
        runs, [&] { return run(shell, server, windows); },
        [&] { return run(bare, server, windows); });
    const bool one = windows == 1;
    const QString what = one ? u"start to page loaded"_s : u"%1 windows loaded"_s.arg(windows);
    const QString against =
        one ? u"bare main window and view"_s : u"%1 bare views, tiled"_s.arg(windows);
    report.ratio(what, against, times.ours, times.bare, u"ms"_s, one ? 1.00 : 1.10);
    report.ratio(u"memory (PSS) 3 s after "_s + what, against, median(shell.mebibytes),
                 median(bare.mebibytes), u"MiB"_s, one ? 1.03 : 1.10);
    if (!one)
        measurePacing(report, runs, shell, server, windows);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int runs = std::max(1, arguments.value(1, u"9"_s).toInt());
    const int windows = std::max(1, arguments.value(2, u"1"_s).toInt());
    return Report::run([&](Report& report) { measure(report, runs, windows); });
}
