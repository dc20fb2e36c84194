// What more than anybody's work does to the program: very many windows, visits, titles, second
// starts and bookmarks. Measures how long the program does not answer meanwhile, and whether
// memory and descriptors come back. Usage: LoadBench [share], a hundredth to 100 hundredths of
// everything. Needs a display that nobody else works on.
#include "base/Prefer.h"
#include "bench/BenchArchive.h"
#include "bench/FrameWatch.h"
#include "bench/PrivateFolders.h"
#include "bench/Report.h"
#include "bench/Waiting.h"
#include "bench/WatchedProgram.h"
#include "bookmarks/Book.h"
#include "tests/e2e/LoopbackServer.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 600'000;
constexpr double longestBlock = 250; // ms
constexpr quint16 alt = 8;           // as the display counts modifiers

/// All that is done, as many of each.
struct Amounts {
    int windows = 300;
    int visits = 32767;
    int restlessWindows = 20;
    int starts = 1000;
    int folders = 5000;
    int bookmarks = 40;

    explicit Amounts(int hundredths)
    {
        for (int* amount : {&windows, &visits, &restlessWindows, &starts, &folders})
            *amount = std::max(2, *amount * hundredths / 100);
    }
};

void scriptPages(LoopbackServer& server, int visits)
{
    server.page(u"/page"_s, "<title>Seite</title><script>onload = () => fetch('/loaded')</script>");
    server.page(u"/loaded"_s, {});
    server.page(u"/filled"_s, {});
    server.answer(u"/favicon.ico"_s, {.status = 404});
    server.page(u"/titles"_s,
                "<script>let n = 0; onload = () => fetch('/loaded'); setInterval(() => {"
                "for (let i = 0; i < 10; ++i) document.title = ++n }, 10)</script>");
    // Ten frames, each of which goes on to the next address when it is there.
    server.page(u"/visits"_s,
                "<title>Besuche</title><script>let n = 0, ended = 0; onload = () => {"
                "for (let i = 0; i < 10; ++i) { const f = document.createElement('iframe');"
                "f.onload = () => { if (n < " +
                    QByteArray::number(visits) +
                    ") f.contentWindow.location.replace('/visit?' + ++n);"
                    "else if (++ended == 10) fetch('/filled') };"
                    "f.src = '/visit?' + ++n; document.body.append(f) } }</script><body>");
}

class Load {
public:
    Load(Report& report, const PrivateFolders& folders, Amounts amounts)
        : m_report(report), m_amounts(amounts), m_tessera(folders.copyProgram())
    {
        scriptPages(m_server, amounts.visits);
        const QString folder = QFileInfo(m_tessera).path();
        Prefer preferences(folder);
        preferences.LoadPref();
        preferences.HistoryRows(32767);
        preferences.SavePref();
        Book book(folder);
        makeArchive(book, folder, static_cast<qint16>(amounts.folders),
                    static_cast<qint16>(amounts.bookmarks),
                    [](int number) { return u"Ordner %1"_s.arg(number); });
        book.SaveAllThema();
    }

    void measure()
    {
        const WatchedProgram program(m_tessera, {m_server.address(u"/page"_s)});
        await("the first page", [this] { return m_server.requests(u"/loaded"_s) > 0; });
        FrameWatch watch(program.id());
        m_watch = &watch;
        watch.untilFree();
        const double memory = program.mebibytes();
        const int descriptors = program.descriptors();

        step(u"%1 windows opened"_s.arg(m_amounts.windows),
             [this] { openWindows(u"/page"_s, m_amounts.windows); });
        step(u"... and closed"_s, [this] { closeWindows(); });
        step(u"%1 windows with restless titles, 10 s"_s.arg(m_amounts.restlessWindows), [this] {
            openWindows(u"/titles"_s, m_amounts.restlessWindows);
            runFor(10'000);
            closeWindows();
        });
        step(u"history of %1 filled by a page"_s.arg(m_amounts.visits), [this] {
            start({m_server.address(u"/visits"_s)});
            await("the visits", [this] { return m_server.requests(u"/filled"_s) > 0; });
        });
        step(u"... and shown"_s, [&] {
            start({u"tessera:historie"_s});
            await("the history's window", [&] { return watch.windows(program.id()) == 2; });
        });
        step(u"%1 second starts"_s.arg(m_amounts.starts), [this] {
            for (int i = 0; i < m_amounts.starts; ++i)
                start({});
        });
        step(u"archive of %1 bookmarks shown"_s.arg(m_amounts.folders * m_amounts.bookmarks), [&] {
            start({u"tessera:archiv"_s});
            await("the archive's window", [&] { return watch.windows(program.id()) == 3; });
        });

        step(u"all windows closed"_s, [this] { closeWindows(); });
        m_report.value(u"descriptors more than at the start"_s, program.descriptors() - descriptors,
                       {}, 10);
        m_report.ratio(u"memory (PSS) with history and archive open"_s, u"at the start"_s,
                       program.mebibytes(), memory, u"MiB"_s, {});
    }

private:
    static void await(const char* what, const std::function<bool()>& happened)
    {
        if (!runUntil(happened, patience))
            throw BenchError("in vain waited for " + std::string(what));
    }

    void step(const QString& what, const std::function<void()>& work)
    {
        m_watch->takeLongest();
        QElapsedTimer clock;
        clock.start();
        work();
        const double worked = static_cast<double>(clock.nsecsElapsed()) / 1e6;
        m_report.value(what, worked + m_watch->untilFree(), u"ms"_s);
        m_report.value(what + u": longest block"_s, m_watch->takeLongest(), u"ms"_s, longestBlock);
    }

    /// One further start; the loop runs meanwhile, as it has to serve pages.
    void start(const QStringList& arguments) const
    {
        QProcess process;
        process.start(m_tessera, arguments);
        await("a second start", [&] { return process.state() == QProcess::NotRunning; });
        if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
            throw BenchError("a second start failed");
    }

    void openWindows(const QString& path, int count)
    {
        const int before = m_server.requests(u"/loaded"_s);
        for (int i = 1; i <= count; ++i) {
            start({m_server.address(path)});
            await("a window", [&] { return m_server.requests(u"/loaded"_s) >= before + i; });
        }
    }

    void closeWindows()
    {
        m_watch->press('f', alt);
        m_watch->untilFree();
        m_watch->press('s');
    }

    Report& m_report;
    Amounts m_amounts;
    QString m_tessera;
    LoopbackServer m_server;
    FrameWatch* m_watch = nullptr;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const int share = std::clamp(QCoreApplication::arguments().value(1, u"100"_s).toInt(), 1, 100);
    return Report::run([&](Report& report) {
        const PrivateFolders folders;
        Load(report, folders, Amounts(share)).measure();
    });
}
