#include "app/OpenWindows.h"
#include "tests/e2e/Scenario.h"

#include <QAbstractNativeEventFilter>
#include <QDir>
#include <QWidget>
#include <QtTest>

#include <ctime>
#include <sys/resource.h>
#include <xcb/xproto.h>

using namespace Qt::StringLiterals;

namespace {

/// What the desktop gives a start, made at this moment.
QString startupId(const QString& name)
{
    timespec now = {};
    ::clock_gettime(CLOCK_MONOTONIC, &now); // the display's clock
    return name + u"_TIME"_s + QString::number(quint32(now.tv_sec * 1000 + now.tv_nsec / 1000000));
}

} // namespace

/// The start of the program beside others, as a desktop and a shell start it.
class StartTest : public Scenario, public QAbstractNativeEventFilter {
    Q_OBJECT
public:
    /// Keeps what programs tell the desktop, in pieces of 20 bytes.
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* /*result*/) override
    {
        const auto* event = static_cast<const xcb_client_message_event_t*>(message);
        if (type == "xcb_generic_event_t" && (event->response_type & 0x7F) == XCB_CLIENT_MESSAGE &&
            event->format == 8)
            m_heard.append(reinterpret_cast<const char*>(event->data.data8), 20);
        return false;
    }

private slots:
    void initTestCase() { qApp->installNativeEventFilter(this); }

    void theDesktopHearsThatAStartIsOver()
    {
        m_program->variable("DESKTOP_STARTUP_ID", startupId(u"first"_s));
        open(u"/red"_s, u"Rot"_s);
        QTRY_VERIFY_WITH_TIMEOUT(m_heard.contains("remove: ID=first_TIME"), patience);

        QWidget other;
        cover(other);
        m_program->variable("DESKTOP_STARTUP_ID", startupId(u"second"_s));
        QCOMPARE(m_program->startAndWait({}), 0);
        QTRY_VERIFY_WITH_TIMEOUT(m_heard.contains("remove: ID=second_TIME"), patience);
        QTRY_VERIFY_WITH_TIMEOUT(!other.isActiveWindow(), patience);
        User::press(u"F5"_s); // the keys are the frame's
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/red"_s), 2, patience);

        m_program->variable("DESKTOP_STARTUP_ID", startupId(u"third"_s));
        QCOMPARE(m_program->startAndWait({m_server->address(u"/blue"_s)}), 0);
        QTRY_VERIFY_WITH_TIMEOUT(m_heard.contains("remove: ID=third_TIME"), patience);
    }

    void whatComesAtTheEndIsNotLost()
    {
        open(u"/red"_s, u"Rot"_s);
        User::press(u"alt+x b"_s);
        QTRY_SEES(u"Bookmark Archiv"_s);
        User::press(u"alt+m o h Return"_s); // a new folder: the archive is changed
        m_run->terminate();
        QTRY_SEES(u"Meldung"_s);
        QWidget other;
        cover(other);
        m_program->variable("DESKTOP_STARTUP_ID", startupId(u"next"_s));
        QProcess next;
        m_program->start(next, {m_server->address(u"/blue"_s)});
        QTRY_VERIFY_WITH_TIMEOUT(!other.isActiveWindow(), patience); // the question is shown
        QTest::qWait(500);
        QCOMPARE(next.state(), QProcess::Running);
        User::press(u"Return"_s);
        QVERIFY(hasEnded());
        QTRY_SEES(maximised(u"Blau"_s));
        QCOMPARE(m_server->requests(u"/blue"_s), 1);
        next.terminate();
        QVERIFY(next.waitForFinished(patience));
    }

    void changesThatCannotBeSavedStay()
    {
        const QString archive = u"Bookmark Archiv"_s;
        const QString index = m_program->file(u"Book.bkm"_s);
        open(u"/red"_s, u"Rot"_s);
        User::press(u"alt+x b"_s);
        QTRY_SEES(archive);
        User::press(u"alt+m o h Return"_s);
        QVERIFY(QFile::remove(index) && QDir().mkpath(index + u"/x"_s));
        User::press(u"Escape Return"_s); // closed, with its changes saved
        QTRY_SEES(u"Meldung"_s);
        User::press(u"Return"_s); // back to the archive
        QTRY_COMPARE_WITH_TIMEOUT(User::activeWindow(), archive, patience);
        m_run->terminate();
        QTRY_SEES(u"Meldung"_s);
        User::press(u"Return Return"_s);
        QTRY_COMPARE_WITH_TIMEOUT(User::activeWindow(), archive, patience);
        QVERIFY(User::sees(maximised(u"Rot"_s)));
        QVERIFY(QDir(index).removeRecursively());
        m_run->terminate();
        QTRY_SEES(u"Meldung"_s);
        User::press(u"Return"_s);
        QVERIFY(hasEnded());
        QVERIFY(bytesOf(index).contains("Neuer Ordner"));
    }

    void actionsOfTheDesktopsMenu()
    {
        m_program->start(*m_run, {u"tessera:archiv"_s});
        QTRY_SEES(maximised(u"Lizenz.txt"_s));
        QTRY_SEES(u"Bookmark Archiv"_s);
        QCOMPARE(m_program->startAndWait({u"tessera:neu"_s}), 0);
        QTRY_SEES(title());
        QCOMPARE(m_program->startAndWait({u"tessera:historie"_s}), 0);
        QTRY_SEES(u"Historie"_s);
    }

    void whyItDoesNotStartIsShown()
    {
        QVERIFY(QDir(m_program->home()).mkdir(u"tessera.lock"_s)); // is to be a file
        m_program->start(*m_run, {});
        QTRY_SEES(u"Tessera"_s);
        User::press(u"Return"_s);
        QVERIFY(hasEnded());
        QCOMPARE(m_run->exitCode(), 1);
        QVERIFY(QString::fromUtf8(m_run->readAll()).contains(u"tessera.lock' ist nicht"_s));
    }

    void strangeNamesAndFewDescriptors()
    {
        m_program->prepare(*m_run);
        m_run->start(u"/bin/sh"_s,
                     {u"-c"_s,
                      u"cd \"$HOME\"; name=$(printf '\\344.html'); ulimit -Sn 60; "
                      "echo '<title>Umlaut</title>' >\"$name\"; exec \"$0\" \"$name\""_s,
                      m_program->file(u"tessera"_s)});
        QTRY_SEES(maximised(u"Umlaut"_s));
        rlimit limit = {};
        QCOMPARE(::prlimit(static_cast<pid_t>(m_run->processId()), RLIMIT_NOFILE, nullptr, &limit),
                 0);
        QCOMPARE(limit.rlim_cur, std::min(limit.rlim_max, rlim_t{524288}));
    }

    void pagesAreToldOfADarkDesktop()
    {
        m_server->page(u"/scheme"_s, "<script>document.title = matchMedia("
                                     "'(prefers-color-scheme: dark)').matches ? 'dunkel' : 'hell'"
                                     "</script>");
        QVERIFY(QDir(m_program->home()).mkdir(u".config"_s));
        writeBytes(m_program->home() + u"/.config/kdeglobals"_s,
                   "[Colors:Window]\nBackgroundNormal=40,40,40\nForegroundNormal=250,250,250\n"
                   "[Colors:Button]\nBackgroundNormal=50,50,50\nForegroundNormal=250,250,250\n");
        m_program->variable("QT_QPA_PLATFORMTHEME", u"kde"_s);
        m_program->variable("KDE_SESSION_VERSION", u"5"_s);
        open(u"/scheme"_s, u"dunkel"_s);
    }

    void keepsCookiesAndEndsWhileItAsksForAName()
    {
        m_server->page(u"/first"_s, "<script>document.cookie = 'k=1; max-age=9999'; "
                                    "localStorage.k = 1; fetch('/set')</script>");
        m_server->page(u"/later"_s, "<script>if (document.cookie == 'k=1' && localStorage.k) "
                                    "fetch('/kept'); location = '/file'</script>");
        m_server->answer(u"/file"_s, {.body = "x",
                                      .type = "application/octet-stream",
                                      .headers = "Content-Disposition: attachment\r\n"});
        for (const auto& [start, until] :
             {std::pair{u"/first"_s, u"/set"_s}, {u"/later"_s, u"/file"_s}}) {
            m_program->start(*m_run, {m_server->address(start)});
            QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(until), 1, patience);
            QTest::qWait(500); // the save dialog comes up
            m_run->terminate();
            QVERIFY(hasEnded());
            QCOMPARE(m_run->exitStatus(), QProcess::NormalExit);
            QCOMPARE(m_run->exitCode(), 0);
        }
        QCOMPARE(m_server->requests(u"/kept"_s), 1);
    }

    void windowsOfAKilledRunAreOffered()
    {
        const QString kept = u"/.local/share/Tessera/fenster.json"_s;
        open(u"/red"_s, u"Rot"_s);
        QCOMPARE(m_program->startAndWait({m_server->address(u"/blue"_s)}), 0);
        QTRY_SEES(title());
        User::press(u"ctrl+Tab alt+minus x"_s); // the red page covers the blue one
        QTRY_SEES(maximised(u"Rot"_s));
        for (const bool isReopened : {true, false}) {
            QTRY_VERIFY_WITH_TIMEOUT(bytesOf(m_program->home() + kept).contains("Blau"), patience);
            QTest::qWait(2500); // whatever else has changed is kept, too
            if (isReopened) {
                const auto left = openWindowsFromBytes(bytesOf(m_program->home() + kept));
                QVERIFY(left && left->windows.size() == 2);
                QVERIFY(!left->windows[0].place.intersects(left->windows[1].place));
            }
            m_run->kill();
            m_run->waitForFinished();
            m_program->start(*m_run, {});
            QTRY_SEES(maximised(u"Lizenz.txt"_s));
            const int red = m_server->requests(u"/red"_s);
            const int blue = m_server->requests(u"/blue"_s);
            User::press(isReopened ? u"alt+w"_s : u"alt+v"_s);
            if (!isReopened)
                break;
            QTRY_SEES(maximised(u"Rot"_s));
            QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/red"_s), red + 1, patience);
            QTest::qWait(1000);
            QCOMPARE(m_server->requests(u"/blue"_s), blue); // nobody sees it yet
            User::press(u"alt+minus w"_s);
            QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/blue"_s), blue + 1, patience);
            User::press(u"alt+minus x"_s);
        }
        QTRY_VERIFY_WITH_TIMEOUT(!bytesOf(m_program->home() + kept).contains("Blau"), patience);
        User::press(u"ctrl+q"_s);
        QVERIFY(hasEnded());
        QVERIFY(!QFile::exists(m_program->home() + kept));
    }

private:
    /// Gives the keys to a window of another program.
    static void cover(QWidget& other)
    {
        other.setGeometry(300, 300, 400, 300);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        User::click(other.geometry().center());
        QVERIFY(QTest::qWaitForWindowActive(&other));
    }

    QByteArray m_heard;
};

QTEST_MAIN(StartTest)
#include "StartTest.moc"
