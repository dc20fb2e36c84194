// Works with the real program at random, with real keys and a real mouse.
// Usage: Monkey [seed [minutes]]. Needs a display with a window manager.
#include "base/Errors.h"
#include "base/Prefer.h"
#include "bench/ProcessTree.h"
#include "bookmarks/ArchiveRecords.h"
#include "tests/e2e/Scenario.h"

#include <QDirIterator>
#include <QElapsedTimer>
#include <QLocalSocket>

#include <csignal>
#include <cstdio>
#include <numeric>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 mostAnswer = 1000; // milliseconds
constexpr int remembered = 12;      // steps that are told with a finding

const QStringList allKeys{
    u"ctrl+n"_s,       u"ctrl+w"_s,       u"ctrl+Tab"_s,  u"ctrl+shift+Tab"_s, u"ctrl+1"_s,
    u"ctrl+3"_s,       u"ctrl+shift+t"_s, u"F5"_s,        u"alt+Left"_s,       u"alt+Right"_s,
    u"Escape"_s,       u"Tab"_s,          u"shift+Tab"_s, u"Return"_s,         u"space"_s,
    u"F6"_s,           u"F11"_s,          u"ctrl+plus"_s, u"ctrl+0"_s,         u"Next"_s,
    u"ctrl+shift+n"_s, u"ctrl+u"_s,       u"ctrl+j"_s,    u"ctrl+h"_s,         u"F12"_s,
    u"ctrl+s"_s,       u"alt+Return"_s,   u"Delete"_s,    u"Down"_s,           u"Up"_s};

void script(LoopbackServer& server)
{
    const QByteArray links = "<p><a href=/red>Rot</a> <a href=/frames>Rahmen</a> "
                             "<a href=/popup target=_blank>Neu</a> <a href=/file>Datei</a> "
                             "<a href=/none>Fehlt</a> <a href='mailto:x@example.org'>Post</a>"
                             "<form action=/red><input name=a><select><option>1<option>2</select>"
                             "<textarea></textarea><button>Los</button></form>";
    server.page(u"/red"_s, "<title>Rot</title><body style='background:#fcc'>" + links);
    server.page(u"/frames"_s,
                "<title>Rahmen</title>" + links + "<iframe src=/red></iframe><iframe src=/moves>");
    server.page(u"/moves"_s,
                "<title>0</title>" + links +
                    "<canvas id=c></canvas><script>let n = 0; setInterval(() => { document.title = "
                    "++n; c.getContext('2d').fillRect(n % 300, n % 150, 9, 9) }, 20)</script>");
    server.page(u"/popup"_s,
                "<title>Kind</title>" + links +
                    "<script>onclick = () => open('/red', '', 'width=300,height=200'); "
                    "onbeforeunload = event => event.preventDefault()</script>");
    server.page(u"/asks"_s, "<title>Fragt</title>" + links +
                                "<script>setTimeout(() => confirm('Weiter?'), 400)</script>");
    server.page(u"/hangs"_s, "<title>Hängt</title>" + links +
                                 "<script>onclick = () => { for (const end = Date.now() + 9000;"
                                 "Date.now() < end;); }</script>");
    server.page(u"/sound"_s,
                "<title>Ton</title>" + links +
                    "<script>onclick = () => { const sound = new AudioContext; const tone = "
                    "sound.createOscillator(); tone.connect(sound.destination); tone.start() "
                    "}</script>");
    server.answer(u"/endless"_s, {.body = QByteArray(4000, 'x'), .sent = 2000});
    server.answer(u"/file"_s, {.body = QByteArray(90000, 'x'),
                               .type = "application/octet-stream",
                               .headers = "Content-Disposition: attachment\r\n"});
}

Desk& desk()
{
    return Desk::here();
}

/// Works with the real program as no user would have the patience to: takes at random what a
/// hand can do, and looks after each step whether the program is still what it should be. The
/// same seed takes the same steps; what the program makes of them depends on the machine, too.
class Monkey {
public:
    explicit Monkey(unsigned seed);

    /// Works until the time is over. Starts the program again when a step has ended it.
    void work(std::chrono::minutes time);
    /// How many steps were done.
    int steps() const { return m_steps; }
    /// The longest time that the program took to answer after a step, in milliseconds.
    qint64 slowest() const { return m_slowest; }
    /// What was wrong, each with the steps before it.
    const QStringList& findings() const { return m_findings; }

private:
    struct Habit {
        const char* name;
        int weight;
        void (Monkey::*act)();
    };
    static const std::vector<Habit>& habits();

    void start();
    void step();
    void end();
    /// Looks at the program as it is after a step.
    void look();
    void lookAtAnswer();
    void lookAtOutput();
    void lookAtWindows();
    void lookAtFiles();
    void find(const QString& what);
    bool isRunning() { return m_run.state() != QProcess::NotRunning && !m_run.waitForFinished(1); }

    void press(const QString& keys);
    void pressKeys();
    void openPage();
    void typeNonsense();
    void clickSomewhere();
    void pullSomething();
    void chooseFromMenu();
    void useArchive();
    void answerDialog();
    void startSecondCopy();
    void resizeWindow();
    void minimiseWindow();
    void killPage();

    int below(int end) { return std::uniform_int_distribution(0, end - 1)(m_chance); }
    template <typename List>
    auto one(const List& list)
    {
        return list[below(int(list.size()))];
    }
    QString page();
    QPoint place();

    unsigned m_seed;
    std::mt19937 m_chance;
    LoopbackServer m_server;
    Installation m_program;
    QProcess m_run;
    QByteArray m_output;
    QStringList m_before;
    QStringList m_findings;
    QDir m_pictures{QCoreApplication::applicationDirPath()};
    int m_steps = 0;
    qint64 m_slowest = 0;
};

Monkey::Monkey(unsigned seed) : m_seed(seed), m_chance(seed)
{
    script(m_server);
    m_pictures.mkpath(u"failures"_s);
    m_pictures.cd(u"failures"_s);
    Prefer preferences(QFileInfo(m_program.file(u"Pref.tsp"_s)).path());
    preferences.LoadPref();
    preferences.HomeUrl(m_server.address(u"/red"_s));
    preferences.SearchEngine(m_server.address(u"/frames"_s));
    preferences.SavePref();
}

const std::vector<Monkey::Habit>& Monkey::habits()
{
    static const std::vector<Habit> all{{"key", 30, &Monkey::pressKeys},
                                        {"page", 14, &Monkey::openPage},
                                        {"text", 5, &Monkey::typeNonsense},
                                        {"click", 14, &Monkey::clickSomewhere},
                                        {"drag", 6, &Monkey::pullSomething},
                                        {"menu", 12, &Monkey::chooseFromMenu},
                                        {"archive", 8, &Monkey::useArchive},
                                        {"answer", 12, &Monkey::answerDialog},
                                        {"second start", 3, &Monkey::startSecondCopy},
                                        {"size", 3, &Monkey::resizeWindow},
                                        {"minimise", 1, &Monkey::minimiseWindow},
                                        {"kill", 2, &Monkey::killPage}};
    return all;
}

void Monkey::work(std::chrono::minutes time)
{
    for (const QDeadlineTimer over(time); !over.hasExpired();) {
        if (m_run.state() == QProcess::NotRunning)
            start();
        step();
    }
    end();
}

void Monkey::start()
{
    m_before << u"start"_s;
    m_program.start(m_run, {m_server.address(page())});
    if (!QTest::qWaitFor([] { return !User::activeWindow().isEmpty(); }, patience))
        find(u"no window after the start"_s);
}

void Monkey::step()
{
    const auto add = [](int sum, const Habit& habit) { return sum + habit.weight; };
    int chance = below(std::accumulate(habits().begin(), habits().end(), 0, add));
    const auto chosen =
        std::find_if(habits().begin(), habits().end(), [&chance](const Habit& habit) {
            chance -= habit.weight;
            return chance < 0;
        });
    m_before << QLatin1String(chosen->name);
    (this->*chosen->act)();
    m_before = m_before.last(qMin(m_before.size(), remembered));
    ++m_steps;
    look();
}

void Monkey::look()
{
    lookAtOutput();
    if (!isRunning()) {
        if (m_run.exitStatus() != QProcess::NormalExit || m_run.exitCode() != 0)
            find(u"ended with %1"_s.arg(m_run.exitCode()));
        lookAtFiles();
        return;
    }
    lookAtAnswer();
    lookAtWindows();
}

void Monkey::lookAtAnswer()
{
    // It greets whoever calls it, as soon as it gets to that.
    QLocalSocket call;
    QElapsedTimer time;
    time.start();
    call.connectToServer(m_program.home() + u"/tessera.socket"_s);
    const bool hasAnswered = call.waitForReadyRead(patience);
    if (!hasAnswered && (!isRunning() || call.error() != QLocalSocket::SocketTimeoutError))
        return; // it is just ending
    m_slowest = qMax(m_slowest, time.elapsed());
    if (time.elapsed() > mostAnswer)
        find(u"no answer for %1 ms"_s.arg(time.elapsed()));
}

void Monkey::lookAtOutput()
{
    m_output += m_run.readAll();
    for (qsizetype end; (end = m_output.indexOf('\n')) >= 0; m_output.remove(0, end + 1)) {
        const QString line = QString::fromUtf8(m_output.first(end));
        // There is no desktop that could open a download or a page.
        if (!isOfEngine(line) && !line.startsWith("Unable to detect a "_L1))
            find(line);
    }
}

void Monkey::lookAtWindows()
{
    // A window that is just going may be named no more.
    const auto areNamed = [] {
        const QStringList all = desk().windows();
        return std::all_of(all.begin(), all.end(), [all](const QString& window) {
            return !desk().titleOf(window).isEmpty() || !desk().windows().contains(window);
        });
    };
    if (!QTest::qWaitFor(areNamed, patience))
        find(u"a window without a caption"_s);
    const auto haveKeys = [] { return desk().windows().isEmpty() || !desk().active().isEmpty(); };
    if (!QTest::qWaitFor(haveKeys, patience)) {
        find(u"no window has the keys"_s);
        startSecondCopy();
    }
}

void Monkey::lookAtFiles()
{
    try {
        const QString folder = QFileInfo(m_program.file(u"Pref.tsp"_s)).path();
        Prefer(folder).LoadPref();
        QDirIterator files(folder, {u"*.bkm"_s}, QDir::Files);
        while (files.hasNext())
            if (const QString file = files.next(); file.endsWith("/Book.bkm"_L1))
                readThemaRecords(bytesOf(file));
            else
                readBookmarks(bytesOf(file), 1);
    } catch (const Error& error) {
        find(error.text());
    }
}

void Monkey::find(const QString& what)
{
    const QString file = u"monkey-%1-%2.png"_s.arg(m_seed).arg(m_findings.size() + 1);
    m_findings << u"step %1 (%2): %3"_s.arg(m_steps).arg(m_before.join(u", "_s), what);
    std::fprintf(stderr, "%s\n", qPrintable(m_findings.constLast()));
    desk().picture().save(m_pictures.filePath(file));
}

void Monkey::end()
{
    m_before << u"end"_s;
    m_run.terminate();
    for (int i = 0; i < 10 && !m_run.waitForFinished(patience / 10); ++i)
        User::press(u"alt+j Return"_s); // what would be lost is asked about
    if (m_run.state() != QProcess::NotRunning)
        find(u"does not end"_s);
    look();
}

void Monkey::press(const QString& keys)
{
    m_before.last() += u' ' + keys;
    User::press(keys);
}

void Monkey::pressKeys()
{
    for (int i = below(4); i >= 0; --i)
        press(one(allKeys));
}

void Monkey::openPage()
{
    const QString path = page();
    press(one(QStringList{u"ctrl+l"_s, u"ctrl+n ctrl+l"_s}));
    m_before.last() += u' ' + path;
    User::enter(m_server.address(path));
}

void Monkey::typeNonsense()
{
    User::enter(one(QStringList{u"wetter"_s, u"x"_s, u"/tmp"_s, u"about:blank"_s, u"a b c"_s}));
}

void Monkey::clickSomewhere()
{
    const QPoint where = place();
    const int button = one(QList<int>{1, 1, 1, 3, 2});
    m_before.last() += u" %1 at %2,%3"_s.arg(button).arg(where.x()).arg(where.y());
    User::click(where, 1 + below(2), button);
}

void Monkey::pullSomething()
{
    User::drag(place(), place());
}

void Monkey::chooseFromMenu()
{
    QStringList way{one(QStringList{u"alt+x"_s, u"alt+f"_s, u"alt+minus"_s, u"Menu"_s})};
    for (int i = below(9); i >= 0; --i)
        way << u"Down"_s;
    press(way.join(u' ') + one(QStringList{u" Return"_s, u" Right Return"_s}));
}

void Monkey::useArchive()
{
    press(one(QStringList{u"ctrl+d Return"_s, u"ctrl+d Escape"_s, u"ctrl+shift+o"_s}));
    press(one(QStringList{u"Down F2"_s, u"End Delete"_s, u"ctrl+z"_s, u"ctrl+shift+z"_s,
                          u"asterisk Return"_s, u"alt+m Down Right Return"_s, u"ctrl+s"_s}));
}

void Monkey::answerDialog()
{
    press(one(QStringList{u"Escape"_s, u"Return"_s, u"Tab Return"_s, u"Escape Escape"_s}));
}

void Monkey::startSecondCopy()
{
    if (const int code = m_program.startAndWait({m_server.address(page())}); code != 0)
        find(u"a second start ended with %1"_s.arg(code));
}

void Monkey::resizeWindow()
{
    desk().resize(desk().active(), {300 + below(900), 200 + below(700)});
}

void Monkey::minimiseWindow()
{
    if (!desk().minimise(desk().active()))
        return;
    QTest::qWait(500);
    startSecondCopy(); // brings the frame back
}

void Monkey::killPage()
{
    QList<qint64> pages = processTree(m_run.processId());
    erase_if(pages, [](qint64 id) {
        return !bytesOf(u"/proc/%1/cmdline"_s.arg(id)).contains("type=renderer");
    });
    if (!pages.isEmpty())
        ::kill(static_cast<pid_t>(one(pages)), SIGKILL);
}

QString Monkey::page()
{
    return one(QStringList{u"/red"_s, u"/frames"_s, u"/moves"_s, u"/popup"_s, u"/asks"_s,
                           u"/hangs"_s, u"/sound"_s, u"/endless"_s, u"/file"_s, u"/none"_s});
}

/// Somewhere in the active window: a click beside it would leave the program.
QPoint Monkey::place()
{
    const QRect window = desk().placeOf(desk().active());
    return window.topLeft() +
           QPoint(below(qMax(1, window.width())), below(qMax(1, window.height())));
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const unsigned seed = arguments.value(1, u"1"_s).toUInt();
    const int minutes = arguments.value(2, u"60"_s).toInt();
    Monkey monkey(seed);
    monkey.work(std::chrono::minutes(minutes));
    std::printf("seed %u: %d steps in %d min, slowest answer %lld ms, %lld findings\n", seed,
                monkey.steps(), minutes, static_cast<long long>(monkey.slowest()),
                static_cast<long long>(monkey.findings().size()));
    return monkey.findings().isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE;
}
