#include "tests/e2e/LoopbackServer.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int patience = 30000;

/// A copy of the program in a folder of its own, with a home of its own.
class Installation {
public:
    Installation()
    {
        for (const auto& name : {u"tessera"_s, u"libtessera_shell.so"_s, u"Lizenz.txt"_s})
            QFile::copy(QCoreApplication::applicationDirPath() + u'/' + name, file(name));
        m_environment = QProcessEnvironment::systemEnvironment();
        m_environment.insert(u"HOME"_s, m_home.path());
        m_environment.insert(u"XDG_RUNTIME_DIR"_s, m_home.path());
        m_environment.remove(u"XDG_DATA_HOME"_s);
        m_environment.remove(u"XDG_CACHE_HOME"_s);
        if (::geteuid() == 0)
            m_environment.insert(u"QTWEBENGINE_DISABLE_SANDBOX"_s, u"1"_s);
    }

    QString file(const QString& name) const { return m_folder.filePath(name); }
    void start(QProcess& process, const QStringList& arguments) const
    {
        process.setProcessEnvironment(m_environment);
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.setWorkingDirectory(QDir::rootPath());
        process.start(file(u"tessera"_s), arguments);
    }
    /// Starts another copy and waits for its end.
    int startAndWait(const QStringList& arguments, QByteArray* output = nullptr) const
    {
        QProcess process;
        start(process, arguments);
        if (!process.waitForFinished(patience))
            return -1;
        if (output != nullptr)
            *output = process.readAll();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
    }
    QByteArray preferences() const
    {
        QFile pref(file(u"Pref.tsp"_s));
        return pref.open(QIODevice::ReadOnly) ? pref.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_folder;
    QTemporaryDir m_home;
    QProcessEnvironment m_environment;
};

} // namespace

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
        QCOMPARE(program.preferences().size(), 618); // written at the end, by the frame
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
        QVERIFY(program.preferences().isEmpty());
    }
};

QTEST_GUILESS_MAIN(ProgramTest)
#include "ProgramTest.moc"
