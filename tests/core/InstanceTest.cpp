#include "app/InstanceServer.h"
#include "launcher/CommandLine.h"
#include "launcher/InstanceClient.h"
#include "launcher/InstanceMessage.h"
#include "launcher/InstancePlace.h"
#include "tests/TestCase.h"

#include <QLocalSocket>

#include <algorithm>
#include <array>
#include <csignal>
#include <future>
#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;
using Number = InstanceMessage::Number;

namespace {

QByteArray bytesOf(const InstanceMessage& message)
{
    return QByteArray::fromStdString(encodeMessage(message));
}

const QByteArray goodBytes = bytesOf({Number::HandOver, "http://ä/", "token", "id"});
const QByteArray greeting = bytesOf({Number::Greeting, "Tessera 5.3.5 - [ä]", {}, {}});
const QByteArray acknowledgement = bytesOf({});

} // namespace

/// The start of the program, beside a copy that runs already or has just ended.
class InstanceTest : public TestCase {
    Q_OBJECT
private slots:
    void init()
    {
        TestCase::init();
        m_place = {path(), {}};
        QCOMPARE(m_lock.acquire(m_place.lockPath()), InstanceLock::State::Held);
        m_got.clear();
        m_onMessage = [] {};
        m_server =
            std::make_unique<InstanceServer>([] { return QStringLiteral("Tessera 5.3.5 - [ä]"); },
                                             [this](const SecondStart& what) {
                                                 m_got.append(what);
                                                 m_onMessage();
                                                 return true;
                                             });
    }
    void cleanup()
    {
        m_server.reset();
        m_lock.release();
    }

    void acknowledgesAfterHandling()
    {
        m_server->patience(0ms); // a message that waited is not cut off
        QVERIFY(listen());
        QLocalSocket caller;
        call(caller, goodBytes);
        m_onMessage = [&] {
            caller.waitForReadyRead(20);
            QCOMPARE(caller.readAll(), greeting);
        };
        QTRY_COMPARE(caller.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(caller.readAll(), acknowledgement);
        QCOMPARE(m_got.size(), 1);
        QCOMPARE(m_got[0].address, QStringLiteral("http://ä/"));
        QCOMPARE(m_got[0].activationToken, QStringLiteral("token"));
        QCOMPARE(m_got[0].startupId, QStringLiteral("id"));
    }

    void badCallersAreDropped()
    {
        using Bad = std::pair<QByteArray, std::chrono::milliseconds>;
        const auto with = [](qsizetype place, char byte) {
            return Bad(QByteArray(goodBytes).replace(place, 1, &byte, 1), 1h);
        };
        const char more = static_cast<char>(goodBytes.at(4) + 1);
        const Bad leftOver(with(4, more).first + 'x', 1h);
        QVERIFY(listen());
        for (const auto& [bytes, patience] :
             {Bad(goodBytes.left(20), 50ms), Bad("GET / HTTP/1.1\r\n\r\n", 1h),
              Bad(acknowledgement, 1h), leftOver, with(6, ' '), // too long announced
              with(13, '\xFF')}) {                              // a text past the end
            m_server->patience(patience);
            QLocalSocket caller;
            call(caller, bytes);
            QTRY_COMPARE(caller.state(), QLocalSocket::UnconnectedState);
            QCOMPARE(caller.readAll(), greeting);
        }
        QVERIFY(m_got.isEmpty());
        handsOver("http://x/");
    }

    void callerGivesUp()
    {
        // It hears the caption, but the acknowledgement comes too late.
        QVERIFY(listen());
        auto late = start("x", 300ms);
        m_onMessage = [&] { late.wait(); };
        QTRY_COMPARE(m_got.size(), 1);
        const StartResult given = late.get();
        QCOMPARE(given.outcome, Outcome::Failed);
        QVERIFY(given.error.find("'Tessera 5.3.5 - [ä]'") != std::string::npos);
    }

    void exactlyOneOfManyIsFirst()
    {
        std::vector<std::future<StartResult>> starts(6);
        for (auto& one : starts)
            one = start("http://x/");
        // They wait for the end of the running copy, then for the new one to listen.
        QVERIFY(starts[0].wait_for(50ms) == std::future_status::timeout);
        m_lock.release();
        QTRY_COMPARE(std::count_if(starts.begin(), starts.end(), isReady), 1);
        const auto first = std::find_if(starts.begin(), starts.end(), isReady);
        const StartResult holder = first->get();
        starts.erase(first);
        QCOMPARE(holder.outcome, Outcome::FirstCopy);
        QVERIFY(listen());
        QTRY_VERIFY(std::all_of(starts.begin(), starts.end(), isReady));
        for (auto& other : starts)
            QCOMPARE(other.get().outcome, Outcome::HandedOver);
        QCOMPARE(m_got.size(), 5);
    }

    void filesAreRemovedWhileItRuns()
    {
        QVERIFY(listen());
        QVERIFY(QFile::remove(QString::fromStdString(m_place.lockPath())));
        handsOver("http://x/"); // and is no second first copy
        m_lock.release();
        QCOMPARE(m_lock.acquire(m_place.lockPath()), InstanceLock::State::Held);
        QVERIFY(QFile::remove(socketPath()));
        const StartResult lost = start("http://x/", 50ms).get();
        QVERIFY(lost.error.find("Bitte das laufende Tessera beenden") != std::string::npos);
        // Who has taken the place meanwhile keeps its socket.
        InstanceServer other([] { return QString(); }, [](const SecondStart&) { return true; });
        QVERIFY(other.listen(m_place.socketPath()));
        m_server.reset();
        QVERIFY(QFile::exists(socketPath()));
    }

    void killedCopyIsReplaced()
    {
        m_lock.release();
        const pid_t killed = ::fork();
        if (killed == 0) {
            m_lock.acquire(m_place.lockPath());
            listen();
            ::raise(SIGKILL);
        }
        QCOMPARE(::waitpid(killed, nullptr, 0), killed);
        QVERIFY(QFile::exists(socketPath()));
        const StartResult next = start("http://x/").get();
        QCOMPARE(next.outcome, Outcome::FirstCopy);
        QVERIFY(listen());
        handsOver("http://y/");
    }

    void folderIsOursAlone()
    {
        const FolderCandidates both{{path("missing"), path("runtime")}, path("fallback")};
        makeFolder("runtime", 0755);
        QCOMPARE(instanceFolder(both).path, path("runtime"));
        QCOMPARE(::chmod(path("runtime").c_str(), 0770), 0);
        QCOMPARE(instanceFolder(both).path, path("fallback"));
        QCOMPARE(::chmod(path("fallback").c_str(), 0750), 0);
        QVERIFY(!instanceFolder(both).error.empty());
        QVERIFY(::symlink("runtime", path("link").c_str()) == 0);
        QVERIFY(instanceFolder({{}, path("link")}).path.empty());
    }

    void commandLine()
    {
        const std::array<const char*, 4> words = {"tessera", "http://a/b", "", "--help"};
        QCOMPARE(commandLineText(4, words.data()), std::string("http://a/b  --help"));
        QCOMPARE(questionOf(2, words.data() + 2), Question::Help);
    }

    void filesBecomeAbsolute()
    {
        writeBytes(TestCase::path(QStringLiteral("ä b%20#?.htm")), {});
        makeFolder("localhost", 0700);
        QCOMPARE(absoluteIfFile("ä b%20#?.htm", path()), path("ä b%20#?.htm"));
        for (const std::string same : {"missing", "localhost", "http://x/"})
            QCOMPARE(absoluteIfFile(same, path()), same);
    }

private:
    std::string path(const std::string& name = {}) const
    {
        return TestCase::path().toStdString() + (name.empty() ? "" : "/") + name;
    }
    void makeFolder(const std::string& name, int mode) const
    {
        QCOMPARE(::mkdir(path(name).c_str(), 0700), 0);
        QCOMPARE(::chmod(path(name).c_str(), static_cast<mode_t>(mode)), 0);
    }
    bool listen() { return m_server->listen(m_place.socketPath()); }
    QString socketPath() const { return QString::fromStdString(m_place.socketPath()); }
    void call(QLocalSocket& caller, const QByteArray& bytes) const
    {
        caller.connectToServer(socketPath());
        caller.write(bytes);
    }
    std::future<StartResult> start(const std::string& address,
                                   std::chrono::milliseconds patience = 30s)
    {
        const StartRequest request{
            "Tessera 5.3.5", {Number::HandOver, address, "t", "s"}, patience};
        return std::async(std::launch::async, takePlaceOrHandOver, m_place, request);
    }
    static bool isReady(const std::future<StartResult>& result)
    {
        return result.wait_for(0s) == std::future_status::ready;
    }
    void handsOver(const std::string& address)
    {
        auto result = start(address);
        QTRY_VERIFY_WITH_TIMEOUT(isReady(result), 20000);
        QCOMPARE(result.get().outcome, Outcome::HandedOver);
        QCOMPARE(m_got.last().address, QString::fromStdString(address));
    }

    InstanceFolder m_place;
    InstanceLock m_lock;
    QList<SecondStart> m_got;
    std::function<void()> m_onMessage;
    std::unique_ptr<InstanceServer> m_server;
};

QTEST_GUILESS_MAIN(InstanceTest)
#include "InstanceTest.moc"
