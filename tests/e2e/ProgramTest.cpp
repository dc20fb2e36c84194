#include "tests/Files.h"
#include "tests/e2e/Installation.h"
#include "tests/e2e/LoopbackServer.h"

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
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
