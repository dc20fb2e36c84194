// Opens, arranges, navigates and closes many browser windows in the shell around
// the real engine, in waves, and looks whether memory and objects come back.
// Usage: SoakTest [windows [minutes]]. Needs a display.
#include "app/FrameMenus.h"
#include "app/GermanTexts.h"
#include "bench/BenchShell.h"
#include "bench/PrivateFolders.h"
#include "bench/ProcessTree.h"
#include "bench/Report.h"
#include "bench/SoakObjects.h"
#include "bench/SoakPages.h"
#include "bench/Waiting.h"
#include "tests/e2e/LoopbackServer.h"

#include <QAction>
#include <QApplication>
#include <QDeadlineTimer>

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

constexpr int windowsPerWave = 10;
// What the engine loads once and keeps (fonts, scripts, caches) has been loaded then.
constexpr int warmUp = 100;
constexpr int patience = 60000;
constexpr int settling = 5000; // longer than any single shot of the shell
// What the engine and the allocator keep grows for some 80 windows, then hardly.
constexpr double mostMemory = 1.15;

QList<qint64> processes()
{
    return processTree(QCoreApplication::applicationPid());
}

class Soak {
public:
    Soak(BenchShell& shell, LoopbackServer& server, QDeadlineTimer end)
        : m_frame(shell.frame()), m_server(server), m_end(end)
    {
    }

    void wave();
    SoakObjects& objects() { return m_objects; }

private:
    void open();
    void arrangeAndNavigate();
    void close();
    void choose(const QString& item) { m_frame.menus().item(item)->trigger(); }
    void await(const char* what, const std::function<bool()>& happened);

    MDIForm1& m_frame;
    LoopbackServer& m_server;
    QDeadlineTimer m_end;
    SoakObjects m_objects;
    qsizetype m_page = 0;
    /// The program and the engine's helpers, without those of pages.
    qsizetype m_processes = processes().size();
};

void Soak::await(const char* what, const std::function<bool()>& happened)
{
    const auto time = std::min<qint64>(patience, m_end.remainingTime());
    if (runUntil(happened, static_cast<int>(time)))
        return;
    for (const frmBrowser* window : m_frame.Browser())
        std::fprintf(stderr, "%s%s\n", qPrintable(window->brwWebBrowser()->LocationURL()),
                     window->brwWebBrowser()->Busy() ? " (busy)" : "");
    throw BenchError((m_end.hasExpired() ? "time is over while waiting: " : "in vain waited: ") +
                     std::string(what));
}

void Soak::wave()
{
    open();
    arrangeAndNavigate();
    m_objects.watch(m_frame);
    close();
}

void Soak::open()
{
    m_frame.VisitUrl(m_server.address(u"/opener"_s)); // this one opens another
    for (int i = 2; i < windowsPerWave; ++i)
        m_frame.VisitUrl(m_server.address(soakPages().at(i % soakPages().size())));
    await("windows loaded",
          [this] { return m_frame.Browser().Count() == windowsPerWave && !isBusy(m_frame); });
}

void Soak::arrangeAndNavigate()
{
    for (const QString& item : {u"mn_Nebeneinander"_s, u"mn_Kaskadiert"_s, u"mn_Untereinander"_s}) {
        choose(item);
        const QString address = m_server.address(soakPages().at(++m_page % soakPages().size()));
        for (const frmBrowser* window : m_frame.Browser())
            window->brwWebBrowser()->Navigate(address);
        await("windows navigated", [&] {
            return !isBusy(m_frame) &&
                   std::all_of(m_frame.Browser().begin(), m_frame.Browser().end(),
                               [&](const frmBrowser* window) {
                                   return window->brwWebBrowser()->LocationURL() == address;
                               });
        });
    }
}

/// Some one by one, the rest together; two of them while they are loading.
void Soak::close()
{
    const QString endless = m_server.address(u"/endless"_s);
    m_frame.Browser().Item(1)->brwWebBrowser()->Navigate(endless);
    m_frame.activeBrowser()->brwWebBrowser()->Navigate(endless);
    const int asked = m_server.requests(u"/endless"_s);
    await("a page began to load", [&] { return m_server.requests(u"/endless"_s) >= asked + 2; });
    for (int i = 0; i < windowsPerWave / 2; ++i)
        choose(u"mn_Aktivschließen"_s);
    choose(u"mn_Alleschließen"_s);
    await("windows gone", [this] { return m_objects.left() == 0; });
    await("their processes gone", [this] { return processes().size() <= m_processes; });
}

double mebibytes(qint64 kibibytes)
{
    return static_cast<double>(kibibytes) / 1024;
}

void compare(Report& report, const QString& what, int closed, qint64 end, qint64 start,
             std::optional<double> most = {})
{
    report.ratio(what + u" after %1 windows"_s.arg(closed), u"after %1"_s.arg(warmUp),
                 mebibytes(end), mebibytes(start), u"MiB"_s, most);
}

void soak(Report& report, const PrivateFolders& folders, int windows, int minutes)
{
    const QDeadlineTimer end{std::chrono::minutes(minutes)};
    LoopbackServer server;
    scriptSoakPages(server);
    BenchShell shell(folders.path({}));
    shell.module().Main(server.address(u"/text"_s));
    runUntil([&] { return !isBusy(shell.frame()); }, patience);
    shell.frame().activeBrowser()->close();
    runFor(settling);
    Soak soak(shell, server, end);

    Memory start;
    int closed = 0;
    while (closed < windows) {
        soak.wave();
        closed += windowsPerWave;
        if (closed == warmUp) {
            runFor(settling);
            start = memoryOf(processes());
            soak.objects().remember(shell.frame());
        }
        const Memory now = memoryOf(processes());
        std::printf("%3d windows: %.1f MiB (PSS), %.1f MiB of it anonymous, %d objects\n", closed,
                    mebibytes(now.proportional), mebibytes(now.anonymous),
                    soak.objects().count(shell.frame()));
        std::fflush(stdout);
    }
    runFor(settling);
    const Memory last = memoryOf(processes());
    compare(report, u"memory (PSS)"_s, closed, last.proportional, start.proportional);
    compare(report, u"anonymous memory"_s, closed, last.anonymous, start.anonymous, mostMemory);
    report.value(u"objects more than then"_s, soak.objects().grown(shell.frame()), u""_s, 0);
}

} // namespace

int main(int argc, char** argv)
{
    return Report::run([&](Report& report) {
        const PrivateFolders folders;
        const QApplication application(argc, argv);
        installGermanTexts();
        const QStringList arguments = QCoreApplication::arguments();
        const int windows = std::max(2 * warmUp, arguments.value(1, u"500"_s).toInt());
        const int minutes = std::max(1, arguments.value(2, u"10"_s).toInt());
        soak(report, folders, windows, minutes);
    });
}
