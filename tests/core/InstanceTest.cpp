#include "app/EndSignals.h"
#include "app/InstanceClient.h"
#include "app/InstanceMessage.h"
#include "app/InstanceServer.h"

#include <QProcess>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <future>
#include <memory>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using namespace std::chrono_literals;
using Number = InstanceMessage::Number;

namespace {

// A caller that speaks raw bytes.
class RawCaller {
public:
    explicit RawCaller(const std::string& path)
        : m_socket(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        path.copy(address.sun_path, sizeof(address.sun_path) - 1);
        m_connected =
            ::connect(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
    }
    RawCaller(const RawCaller&) = delete;
    RawCaller& operator=(const RawCaller&) = delete;
    ~RawCaller() { ::close(m_socket); }

    bool connected() const { return m_connected; }
    void say(const std::string& bytes) const
    {
        ::send(m_socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    }
    /// Hears what was said to it since; whether the other side has hung up.
    bool hungUp()
    {
        char buffer[4096]; // NOLINT(modernize-avoid-c-arrays)
        ssize_t got = 0;
        while ((got = ::recv(m_socket, buffer, sizeof(buffer), 0)) > 0)
            m_reader.feed({buffer, static_cast<std::size_t>(got)});
        InstanceMessage message;
        while (m_reader.next(message) == InstanceReader::State::Complete)
            m_heard.append(message.number);
        return got == 0 || errno != EAGAIN;
    }
    const QList<Number>& heard()
    {
        hungUp();
        return m_heard;
    }

private:
    int m_socket;
    bool m_connected = false;
    InstanceReader m_reader;
    QList<Number> m_heard;
};

// Another copy of the program: this test, started with other arguments.
class Copy : public QProcess {
public:
    Copy(const std::string& folder, const QString& address)
    {
        start(QCoreApplication::applicationFilePath(),
              {QStringLiteral("--copy"), QString::fromStdString(folder), address});
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;
    ~Copy() override
    {
        kill();
        waitForFinished();
    }

    const QByteArray& said() { return m_said += readAll(); }
    bool isFirst() { return said().startsWith("first\n"); }

private:
    QByteArray m_said;
};

const std::string goodBytes = encodeMessage({Number::HandOver, "http://ä/", "token", "id"});

int runCopy(int argc, char** argv)
{
    QTextStream out(stdout);
    const InstanceFolder folder{argv[2], {}};
    StartRequest request;
    request.address = argv[3];
    const StartResult result = takePlaceOrHandOver(folder, request);
    if (result.outcome != Outcome::FirstCopy) {
        out << (result.outcome == Outcome::HandedOver ? "handed over\n" : "failed\n");
        return 0;
    }
    QCoreApplication application(argc, argv);
    EndSignals ends;
    QObject::connect(&ends, &EndSignals::endRequested, &application, &QCoreApplication::quit);
    InstanceServer server([] { return QString(); },
                          [&](const HandOver& what) { out << what.address << '\n'
                                                          << Qt::flush; });
    out << (server.listen(folder.socketPath()) ? "first\n" : "deaf\n") << Qt::flush;
    QCoreApplication::exec();
    out << "ended\n";
    return 0;
}

} // namespace

class InstanceTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(QStringLiteral(".")));
        m_folder = std::make_unique<QTemporaryDir>();
        m_place = {m_folder->path().toStdString(), {}};
        QCOMPARE(m_lock.acquire(m_place.lockPath()), InstanceLock::State::Held);
        m_got.clear();
        m_onMessage = [] {};
        m_server =
            std::make_unique<InstanceServer>([] { return QStringLiteral("Tessera 5.3.5 - [ä]"); },
                                             [this](const HandOver& what) {
                                                 m_got.append(what);
                                                 m_onMessage();
                                             });
    }
    void cleanup()
    {
        m_server.reset();
        m_lock.release();
    }

    void acknowledgesAfterHandling()
    {
        QVERIFY(listen());
        RawCaller caller(m_place.socketPath());
        QList<Number> heardDuring;
        m_onMessage = [&] { heardDuring = caller.heard(); };
        caller.say(goodBytes);
        QTRY_VERIFY(caller.hungUp());
        QCOMPARE(heardDuring, QList{Number::Greeting});
        QCOMPARE(caller.heard(), (QList{Number::Greeting, Number::Acknowledgement}));
        QCOMPARE(m_got.size(), 1);
        QVERIFY(!m_got[0].toFront);
        QCOMPARE(m_got[0].address, QStringLiteral("http://ä/"));
        QCOMPARE(m_got[0].activationToken, QStringLiteral("token"));
        QCOMPARE(m_got[0].startupId, QStringLiteral("id"));
    }

    void handlerMayThrowOrEndTheServer()
    {
        QVERIFY(listen());
        m_onMessage = [] { throw std::runtime_error("no"); };
        auto result = start({});
        QTRY_VERIFY(isReady(result));
        QCOMPARE(result.get().outcome, Outcome::HandedOver);
        QVERIFY(m_got[0].toFront);
        RawCaller caller(m_place.socketPath());
        m_onMessage = [this] { m_server.reset(); };
        caller.say(goodBytes);
        QTRY_VERIFY(caller.hungUp());
        QVERIFY(!QFile::exists(QString::fromStdString(m_place.socketPath())));
    }

    void badCallersAreDropped_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<bool>("patient"); // dropped for what it says, not for the time
        QTest::newRow("silence") << std::string() << false;
        QTest::newRow("half a message") << goodBytes.substr(0, 20) << false;
        QTest::newRow("garbage") << std::string("GET / HTTP/1.1\r\n\r\n") << true;
        QTest::newRow("10 MiB") << "TSR1" + std::string("\0\0\xA0\0", 4) + std::string(100000, 'x')
                                << true;
        QTest::newRow("an acknowledgement") << encodeMessage({}) << true;
    }
    void badCallersAreDropped()
    {
        QFETCH(std::string, bytes);
        QFETCH(bool, patient);
        m_server->patience(patient ? 1h : 50ms);
        QVERIFY(listen());
        RawCaller caller(m_place.socketPath());
        caller.say(bytes);
        QTRY_VERIFY(caller.hungUp());
        QVERIFY(m_got.isEmpty() && !caller.heard().contains(Number::Acknowledgement));
        handsOver();
    }

    void messageThatWaitedIsNotCutOff()
    {
        m_server->patience(0ms);
        QVERIFY(listen());
        RawCaller caller(m_place.socketPath());
        caller.say(goodBytes);
        QTRY_VERIFY(caller.hungUp());
        QCOMPARE(m_got.size(), 1);
    }

    void crowdOfCallers()
    {
        rlimit limit = {};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        const rlimit wide{std::min<rlim_t>(limit.rlim_max, 4096), limit.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &wide), 0);
        QVERIFY(listen());
        std::vector<std::unique_ptr<RawCaller>> callers;
        while (callers.size() < 1000) {
            callers.push_back(std::make_unique<RawCaller>(m_place.socketPath()));
            if (!callers.back()->connected()) {
                callers.pop_back();
                QCoreApplication::processEvents();
            }
        }
        handsOver();
        QTRY_COMPARE(std::count_if(callers.begin(), callers.end(),
                                   [](auto& caller) { return !caller->hungUp(); }),
                     31); // the honest caller took the place of one
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }

    void withoutDescriptorsItGoesOnLater()
    {
        QVERIFY(listen());
        rlimit limit = {};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        RawCaller caller(m_place.socketPath());
        caller.say(goodBytes);
        const rlimit none{3, limit.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &none), 0);
        QCoreApplication::processEvents();
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        QVERIFY(m_got.isEmpty());
        QTRY_COMPARE(m_got.size(), 1);
    }

    void callerWaitsForASlowStart()
    {
        auto result = start("http://x/");
        QVERIFY(result.wait_for(50ms) == std::future_status::timeout);
        QVERIFY(listen());
        QTRY_VERIFY(isReady(result));
        QCOMPARE(result.get().outcome, Outcome::HandedOver);
    }

    void callerGivesUp()
    {
        auto result = start("x", 50ms);
        QVERIFY(result.get().error.find("'Tessera 5.3.5'") != std::string::npos);
        // It hears the caption, but the acknowledgement comes too late.
        QVERIFY(listen());
        auto late = start("x", 300ms);
        m_onMessage = [&] { late.wait(); };
        QTRY_COMPARE(m_got.size(), 1);
        const StartResult given = late.get();
        QCOMPARE(given.outcome, Outcome::Failed);
        QVERIFY(given.error.find("'Tessera 5.3.5 - [ä]'") != std::string::npos);
        auto tooLong = start(std::string(maxMessageBytes, 'x'), 1h);
        QVERIFY(tooLong.get().error.find("zu lang") != std::string::npos);
    }

    void exactlyOneOfManyIsFirst()
    {
        m_lock.release();
        std::vector<std::unique_ptr<Copy>> copies;
        for (int i = 0; i < 6; ++i)
            copies.push_back(std::make_unique<Copy>(m_place.path, QStringLiteral("http://x/")));
        QTRY_COMPARE(std::count_if(copies.begin(), copies.end(),
                                   [](auto& copy) { return copy->said() == "handed over\n"; }),
                     5);
        const auto first =
            std::find_if(copies.begin(), copies.end(), [](auto& copy) { return copy->isFirst(); });
        QVERIFY(first != copies.end());
        QTRY_COMPARE((*first)->said().count("http://x/"), 5);
    }

    void killedCopyIsReplaced()
    {
        m_lock.release();
        Copy killed(m_place.path, {});
        QTRY_VERIFY(killed.isFirst());
        killed.kill();
        QVERIFY(killed.waitForFinished());
        QVERIFY(QFile::exists(QString::fromStdString(m_place.socketPath())));
        Copy next(m_place.path, {});
        QTRY_VERIFY(next.isFirst());
        QCOMPARE(start("http://y/").get().outcome, Outcome::HandedOver);
    }

    void startWhileTheFirstEnds()
    {
        m_lock.release();
        for (int i = 0; i < 10; ++i) {
            Copy running(m_place.path, {});
            QTRY_VERIFY(running.isFirst());
            running.terminate();
            Copy next(m_place.path, QStringLiteral("http://z/"));
            QTRY_VERIFY(running.said().endsWith("ended\n"));
            QTRY_VERIFY(next.isFirst() || next.said() == "handed over\n");
        }
    }

    void endSignals_data()
    {
        QTest::addColumn<int>("number");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }
    void endSignals()
    {
        QFETCH(int, number);
        struct sigaction before = {};
        struct sigaction after = {};
        ::sigaction(number, nullptr, &before);
        {
            const EndSignals ends;
            const QSignalSpy spy(&ends, &EndSignals::endRequested);
            ::raise(number);
            QTRY_COMPARE(spy.size(), 1);
        }
        ::sigaction(number, nullptr, &after);
        QVERIFY(before.sa_handler == after.sa_handler);
        m_lock.release();
        Copy copy(m_place.path, {});
        QTRY_VERIFY(copy.isFirst());
        ::kill(static_cast<pid_t>(copy.processId()), number);
        QTRY_COMPARE(copy.said(), QByteArray("first\nended\n"));
        QVERIFY(!QFile::exists(QString::fromStdString(m_place.socketPath())));
    }

private:
    bool listen() { return m_server->listen(m_place.socketPath()); }

    std::future<StartResult> start(const std::string& address,
                                   std::chrono::milliseconds patience = 30s)
    {
        const StartRequest request{"Tessera 5.3.5", address, "t", "s", patience};
        return std::async(std::launch::async, takePlaceOrHandOver, m_place, request);
    }
    static bool isReady(std::future<StartResult>& result)
    {
        return result.wait_for(0s) == std::future_status::ready;
    }
    void handsOver()
    {
        auto result = start("http://x/");
        QTRY_VERIFY_WITH_TIMEOUT(isReady(result), 20000);
        QCOMPARE(result.get().outcome, Outcome::HandedOver);
        QCOMPARE(m_got.last().address, QStringLiteral("http://x/"));
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    InstanceFolder m_place;
    InstanceLock m_lock;
    QList<HandOver> m_got;
    std::function<void()> m_onMessage;
    std::unique_ptr<InstanceServer> m_server;
};

int main(int argc, char** argv)
{
    if (argc == 4 && qstrcmp(argv[1], "--copy") == 0)
        return runCopy(argc, argv);
    QCoreApplication application(argc, argv);
    InstanceTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "InstanceTest.moc"
