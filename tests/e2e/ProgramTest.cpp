#include "tests/Files.h"
#include "tests/e2e/Installation.h"
#include "tests/e2e/LoopbackServer.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

class ProgramTest : public QObject {
    Q_OBJECT
private slots:
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
        server.page(u"/page"_s, "<title>t</title>");
        const Installation program;
        std::array<QProcess, 3> copies;
        for (QProcess& copy : copies)
            program.start(copy, {server.address(u"/page"_s)});
        QTRY_COMPARE_WITH_TIMEOUT(server.requests(u"/page"_s), 3, patience);
        const auto runs = [](const QProcess& copy) { return copy.state() != QProcess::NotRunning; };
        QTRY_COMPARE_WITH_TIMEOUT(std::count_if(copies.begin(), copies.end(), runs), 1, patience);
        QProcess& first = *std::find_if(copies.begin(), copies.end(), runs);
        QCOMPARE(program.startAndWait({}), 0); // to the front
        QCOMPARE(server.requests(u"/page"_s), 3);
        QVERIFY(QFile::remove(program.file(u"Pref.tsp"_s)));
        first.terminate();
        QVERIFY(first.waitForFinished(patience));
        QCOMPARE(bytesOf(program.file(u"Pref.tsp"_s)).size(), 618); // written at the end
    }

    void answersWithoutAWindow()
    {
        const Installation program;
        QProcess copy;
        program.start(copy, {u"--version"_s});
        QVERIFY(copy.waitForFinished(patience));
        QCOMPARE(copy.readAll(), "Tessera 5.3.5\n"_ba);
        QVERIFY(!QFile::exists(program.file(u"Pref.tsp"_s)));
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
