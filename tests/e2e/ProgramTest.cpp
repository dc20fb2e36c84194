#include "tests/e2e/Installation.h"
#include "tests/e2e/LoopbackServer.h"

#include <QtTest>

#include <csignal>

using namespace Qt::StringLiterals;

class ProgramTest : public QObject {
    Q_OBJECT
private slots:
    void opensPagesTakesOverAndEnds()
    {
        LoopbackServer server;
        for (const auto& path : {u"/a"_s, u"/b"_s, u"/frame"_s})
            server.page(path, "<title>t</title>x");
        server.page(u"/a"_s, "<title>A</title><iframe src='/frame'></iframe>");
        const Installation program;
        QProcess first;
        program.start(first, {server.address(u"/a"_s)});
        QTRY_COMPARE_WITH_TIMEOUT(server.requests(u"/frame"_s), 1, patience);

        // From anywhere, while the first copy runs: its window, not another copy.
        QCOMPARE(program.startAndWait({server.address(u"/b"_s)}), 0);
        QTRY_COMPARE_WITH_TIMEOUT(server.requests(u"/b"_s), 1, patience);
        QCOMPARE(program.startAndWait({}), 0);
        QCOMPARE(first.state(), QProcess::Running);

        QVERIFY(QFile::remove(program.file(u"Pref.tsp"_s)));
        QCOMPARE(::kill(static_cast<pid_t>(first.processId()), SIGTERM), 0);
        QVERIFY(first.waitForFinished(patience));
        QCOMPARE(first.exitStatus(), QProcess::NormalExit);
        QCOMPARE(first.exitCode(), 0);
        QCOMPARE(program.contents(u"Pref.tsp"_s).size(), 618); // written at the end, by the frame
    }

    void keepsCookiesAndEndsWhileItAsksForAName()
    {
        LoopbackServer server;
        server.page(u"/first"_s, "<script>document.cookie = 'k=1; max-age=9999'; "
                                 "localStorage.k = 1; fetch('/set')</script>");
        server.page(u"/later"_s, "<script>if (document.cookie == 'k=1' && localStorage.k) "
                                 "fetch('/kept'); location = '/file'</script>");
        server.answer(u"/file"_s, {.body = "x",
                                   .type = "application/octet-stream",
                                   .headers = "Content-Disposition: attachment\r\n"});
        const Installation program;
        const auto run = [&](const QString& start, const QString& until) {
            QProcess copy;
            program.start(copy, {server.address(start)});
            QTRY_COMPARE_WITH_TIMEOUT(server.requests(until), 1, patience);
            QTest::qWait(500); // the save dialog comes up
            copy.terminate();
            QVERIFY(copy.waitForFinished(patience));
            QCOMPARE(copy.exitStatus(), QProcess::NormalExit);
            QCOMPARE(copy.exitCode(), 0);
        };
        run(u"/first"_s, u"/set"_s);
        run(u"/later"_s, u"/file"_s);
        QCOMPARE(server.requests(u"/kept"_s), 1);
    }

    void oneOfManyStartsIsTheFirst()
    {
        LoopbackServer server;
        const QStringList paths{u"/1"_s, u"/2"_s, u"/3"_s};
        for (const QString& path : paths)
            server.page(path, "<title>t</title>");
        const Installation program;
        std::vector<std::unique_ptr<QProcess>> copies;
        for (const QString& path : paths) {
            copies.push_back(std::make_unique<QProcess>());
            program.start(*copies.back(), {server.address(path)});
        }
        for (const QString& path : paths)
            QTRY_COMPARE_WITH_TIMEOUT(server.requests(path), 1, patience);
        int running = 0;
        QTRY_VERIFY_WITH_TIMEOUT(
            (running = static_cast<int>(std::count_if(
                 copies.begin(), copies.end(),
                 [](const auto& copy) { return copy->state() != QProcess::NotRunning; }))) == 1,
            patience);
        for (const auto& copy : copies) {
            if (copy->state() == QProcess::NotRunning)
                continue;
            copy->terminate();
            QVERIFY(copy->waitForFinished(patience));
        }
    }

    void answersWithoutAWindow()
    {
        const Installation program;
        QByteArray output;
        QCOMPARE(program.startAndWait({u"--version"_s}, &output), 0);
        QCOMPARE(output, "Tessera 5.3.5\n"_ba);
        QVERIFY(program.contents(u"Pref.tsp"_s).isEmpty());
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
