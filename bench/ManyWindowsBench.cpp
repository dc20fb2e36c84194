// What many windows cost, opened one by one by second starts: time, memory, and how long the
// program does not answer meanwhile, as shares of what a bare frame with as many views takes
// for the same. Usage: ManyWindowsBench [windows [runs]]. Needs a display of at least 1280 x
// 1024 pixels that nobody else works on.
#include "base/Prefer.h"
#include "base/Twips.h"
#include "bench/FrameWatch.h"
#include "bench/PrivateFolders.h"
#include "bench/ProcessTree.h"
#include "bench/Report.h"
#include "bench/Waiting.h"
#include "bench/WatchedProgram.h"
#include "tests/e2e/LoopbackServer.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QLocalSocket>
#include <QProcess>
#include <QSize>

#include <algorithm>
#include <array>
#include <cstdio>
#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 120000;
constexpr QSize frame(1200, 900);
constexpr quint16 control = 4; // as the display counts modifiers
constexpr quint16 alt = 8;
constexpr quint32 tab = 0xff09;
constexpr quint32 escape = 0xff1b;

/// What one program takes: milliseconds by the name of the step, and MiB.
struct Costs {
    std::map<QString, double> times = {};
    std::map<QString, double> blocked = {};
    double atStart = 0;
    double withAll = 0;
    double afterwards = 0;
};

class Bench {
public:
    Bench(const PrivateFolders& folders, int windows) : m_folders(folders), m_windows(windows)
    {
        const QByteArray fresh = "Cache-Control: no-store\r\n";
        m_server.answer(u"/page.html"_s, {.body = "<!DOCTYPE html><title>Seite</title><p>Seite"
                                                  "<script>onload = () => fetch('/loaded')"
                                                  "</script>",
                                          .headers = fresh});
        m_server.answer(u"/loaded"_s, {.headers = fresh});
        m_server.answer(u"/favicon.ico"_s, {.status = 404, .headers = fresh});
        m_shell = folders.copyProgram();
        Prefer preferences(QFileInfo(m_shell).path());
        preferences.LoadPref();
        preferences.MdiWidth(toStoredTwips(frame.width()));
        preferences.MdiHeight(toStoredTwips(frame.height()));
        preferences.SavePref();
    }

    Costs shell()
    {
        return costsOf(m_shell, {address()},
                       [this] { QProcess::startDetached(m_shell, {address()}); });
    }
    Costs bare()
    {
        const QString socket = m_folders.path(u"bare.socket"_s);
        const QString size = u"%1x%2"_s.arg(frame.width()).arg(frame.height());
        return costsOf(QCoreApplication::applicationDirPath() + u"/BareFrame"_s,
                       {address(), m_folders.path(u"bare"_s), socket, size}, [&] {
                           QLocalSocket sender;
                           sender.connectToServer(socket);
                           sender.write(address().toUtf8());
                           sender.waitForBytesWritten(patience);
                       });
    }

private:
    QString address() const { return m_server.address(u"/page.html"_s); }

    void openOne(const std::function<void()>& hand)
    {
        const int before = m_server.requests(u"/loaded"_s);
        hand();
        if (!runUntil([&] { return m_server.requests(u"/loaded"_s) > before; }, patience))
            throw BenchError("a window did not load");
    }

    Costs costsOf(const QString& path, const QStringList& arguments,
                  const std::function<void()>& handOver)
    {
        Costs costs;
        const int before = m_server.requests(u"/loaded"_s);
        WatchedProgram program(path, arguments);
        if (!runUntil([&] { return m_server.requests(u"/loaded"_s) > before; }, patience))
            throw BenchError("the first window did not load");
        FrameWatch watch(program.id()); // by now the frame has its window for good
        costs.atStart = program.mebibytes();
        const qsizetype processes = processTree(program.id()).size();

        const auto step = [&](const QString& name, const std::function<void()>& action) {
            watch.takeLongest();
            QElapsedTimer clock;
            clock.start();
            action();
            const auto acted = static_cast<double>(clock.nsecsElapsed()) / 1e6;
            costs.times[name] = acted + watch.untilFree();
            costs.blocked[name] = watch.takeLongest();
        };
        step(u"opened"_s, [&] {
            for (int i = 1; i < m_windows; ++i)
                openOne(handOver);
        });
        costs.withAll = program.mebibytes();
        const auto menu = [&](quint32 letter) {
            watch.press('f', alt);
            watch.untilFree();
            watch.press(letter);
        };
        step(u"cascaded"_s, [&] { menu('k'); });
        step(u"tiled"_s, [&] { menu('u'); });
        step(u"walked"_s, [&] {
            for (int i = 0; i < m_windows; ++i)
                watch.press(tab, control);
        });
        step(u"listed"_s, [&] { watch.press('f', alt); });
        watch.press(escape);
        watch.press(escape);
        watch.untilFree();
        step(u"closed"_s, [&] { menu('s'); });
        if (!runUntil([&] { return processTree(program.id()).size() <= processes; }, patience))
            throw BenchError("the windows were not closed");
        costs.afterwards = program.mebibytes();
        return costs;
    }

    const PrivateFolders& m_folders;
    int m_windows;
    LoopbackServer m_server;
    QString m_shell;
};

void measure(Report& report, int windows, int runs)
{
    const PrivateFolders folders;
    QDir().mkdir(folders.path(u"bare"_s));
    Bench bench(folders, windows);
    std::vector<Costs> shell;
    std::vector<Costs> bare;
    for (int i = 0; i < runs; ++i) {
        bare.push_back(bench.bare());
        shell.push_back(bench.shell());
    }
    const auto middle = [](const std::vector<Costs>& all, const auto& value) {
        std::vector<double> values;
        for (const Costs& costs : all)
            values.push_back(value(costs));
        return median(values);
    };
    const QString many = u"%1 windows "_s.arg(windows);
    const QString against = u"a bare frame, the same"_s;
    const auto compare = [&](const QString& what, const QString& unit, std::optional<double> most,
                             const auto& value) {
        report.ratio(many + what, against, middle(shell, value), middle(bare, value), unit, most);
    };
    compare(u"opened one by one"_s, u"ms"_s, 0.80,
            [](const Costs& costs) { return costs.times.at(u"opened"_s); });
    compare(u"open, memory (PSS)"_s, u"MiB"_s, 0.80,
            [](const Costs& costs) { return costs.withAll; });
    for (const auto& name : {u"cascaded"_s, u"tiled"_s, u"walked"_s, u"listed"_s, u"closed"_s})
        compare(name, u"ms"_s, {}, [&](const Costs& costs) { return costs.times.at(name); });
    for (const auto& name :
         {u"opened"_s, u"cascaded"_s, u"tiled"_s, u"walked"_s, u"listed"_s, u"closed"_s})
        compare(name + u": longest block"_s, u"ms"_s, {},
                [&](const Costs& costs) { return costs.blocked.at(name); });
    report.ratio(u"memory after closing them"_s, u"the same at the start"_s,
                 middle(shell, [](const Costs& costs) { return costs.afterwards; }),
                 middle(shell, [](const Costs& costs) { return costs.atStart; }), u"MiB"_s, 1.30);
    report.ratio(u"memory after closing them, bare"_s, u"the same at the start"_s,
                 middle(bare, [](const Costs& costs) { return costs.afterwards; }),
                 middle(bare, [](const Costs& costs) { return costs.atStart; }), u"MiB"_s, {});
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int windows = std::max(2, arguments.value(1, u"100"_s).toInt());
    const int runs = std::max(1, arguments.value(2, u"3"_s).toInt());
    return Report::run([&](Report& report) { measure(report, windows, runs); });
}
