#include "app/CommandLine.h"
#include "app/FindAppWindow.h"
#include "app/InstanceFolder.h"
#include "app/InstanceLock.h"
#include "app/InstanceMessage.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using Number = InstanceMessage::Number;
using State = InstanceReader::State;

namespace {

constexpr uid_t somebodyElse = 65534;

std::string header(const std::string& length)
{
    return "TSR1" + length;
}

std::string body(const std::string& bytes)
{
    return header(std::string{static_cast<char>(bytes.size()), 0, 0, 0}) + bytes;
}

const std::string noTexts(12, '\0');

} // namespace

class StartUpTest : public QObject {
    Q_OBJECT
private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void readerTakesPiecesOfAnySize_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<int>("messages");
        QTest::addColumn<State>("end");
        const std::string good = encodeMessage({Number::HandOver, "http://ä/", "token", "id"});
        const auto row = [](const char* name, const std::string& bytes, int messages, State end) {
            QTest::newRow(name) << bytes << messages << end;
        };
        row("nothing", {}, 0, State::Incomplete);
        row("one", good, 1, State::Incomplete);
        row("two and a half", good + good + good.substr(0, 20), 2, State::Incomplete);
        row("one, then garbage", good + "x", 1, State::Bad);
        row("garbage", "GET / HTTP/1.1\r\n\r\n", 0, State::Bad);
        row("other version", "TSR2", 0, State::Bad);
        row("longest announced", header({'\xF8', '\xFF', '\x1F', 0}), 0, State::Incomplete);
        row("too long announced", header({'\xF9', '\xFF', '\x1F', 0}), 0, State::Bad);
        row("enormous announced", header("\xFF\xFF\xFF\xFF"), 0, State::Bad);
        row("empty body", body({}), 0, State::Bad);
        row("unknown number", body("\x09" + noTexts + '\0'), 0, State::Bad);
        row("text past the end", body(std::string("\x03\0\x01\0\0\0", 6) + noTexts.substr(4)), 0,
            State::Bad);
        row("huge text", body(std::string("\x03\0\xFF\xFF\xFF\xFF", 6) + noTexts.substr(4)), 0,
            State::Bad);
        row("bytes left over", body(std::string("\x03\0", 2) + noTexts + "x"), 0, State::Bad);
        row("number without texts", body(std::string("\x03\0", 2) + noTexts), 1, State::Incomplete);
    }
    void readerTakesPiecesOfAnySize()
    {
        QFETCH(std::string, bytes);
        QFETCH(int, messages);
        QFETCH(State, end);
        for (const std::size_t piece : {std::size_t{1}, std::size_t{7}, bytes.size() + 1}) {
            InstanceReader reader;
            InstanceMessage message;
            State state = State::Incomplete;
            int complete = 0;
            for (std::size_t i = 0; i < bytes.size(); i += piece) {
                reader.feed(std::string_view(bytes).substr(i, piece));
                while ((state = reader.next(message)) == State::Complete)
                    ++complete;
            }
            QCOMPARE(complete, messages);
            QCOMPARE(state, end);
            reader.feed(bytes);
            QVERIFY(end != State::Bad || reader.next(message) == State::Bad);
        }
    }

    void messagesComeBackUpToTheLimit()
    {
        InstanceMessage message{Number::HandOver, {}, "token", std::string("i\0d", 3)};
        message.text.assign(maxMessageBytes - encodeMessage(message).size(), '\xFF');
        const std::string longest = encodeMessage(message);
        QCOMPARE(longest.size(), maxMessageBytes);
        InstanceReader reader;
        reader.feed(longest);
        InstanceMessage read;
        QVERIFY(reader.next(read) == State::Complete && read == message);
        message.text += 'x';
        QVERIFY(encodeMessage(message).empty());
    }

    void folderIsOursAlone_data()
    {
        QTest::addColumn<int>("runtimeMode"); // 0: missing
        QTest::addColumn<bool>("foreign");
        QTest::addColumn<int>("fallbackMode"); // 0: missing
        QTest::addColumn<QString>("chosen");   // empty: none
        const QString runtime = QStringLiteral("runtime");
        const QString fallback = QStringLiteral("fallback");
        QTest::newRow("runtime folder") << 0700 << false << 0 << runtime;
        QTest::newRow("others may read") << 0755 << false << 0 << runtime;
        QTest::newRow("others may write") << 0770 << false << 0 << fallback;
        QTest::newRow("read-only") << 0500 << false << 0 << fallback;
        QTest::newRow("missing") << 0 << false << 0 << fallback;
        QTest::newRow("fallback exists") << 0 << false << 0700 << fallback;
        QTest::newRow("fallback open to others") << 0 << false << 0750 << QString();
        QTest::newRow("fallback read-only") << 0 << false << 0500 << QString();
        QTest::newRow("both somebody else's") << 0700 << true << 0700 << QString();
    }
    void folderIsOursAlone()
    {
        QFETCH(int, runtimeMode);
        QFETCH(bool, foreign);
        QFETCH(int, fallbackMode);
        QFETCH(QString, chosen);
        const bool isRoot = ::geteuid() == 0;
        if (foreign && !isRoot)
            QSKIP("needs root to make somebody else's folder");
        const FolderCandidates candidates{{"", path("missing"), path("runtime")}, path("fallback")};
        // The superuser may write anywhere: become somebody else for a while.
        QVERIFY(::chmod(path("").c_str(), 0777) == 0);
        QVERIFY(!isRoot || foreign || ::seteuid(somebodyElse) == 0);
        makeFolder("runtime", runtimeMode);
        makeFolder("fallback", fallbackMode);
        if (foreign)
            QVERIFY(::seteuid(somebodyElse) == 0);
        const InstanceFolder folder = instanceFolder(candidates);
        QVERIFY(!isRoot || ::seteuid(0) == 0);
        QCOMPARE(folder.path, chosen.isEmpty() ? std::string() : path(chosen.toUtf8()));
        QCOMPARE(folder.error.empty(), !chosen.isEmpty());
        struct stat info = {};
        QVERIFY(chosen != QStringLiteral("fallback") ||
                (::stat(folder.path.c_str(), &info) == 0 && (info.st_mode & 0777) == 0700));
    }

    void fallbackIsNoLinkAndFitsASocket()
    {
        makeFolder("runtime", 0700);
        QVERIFY(::symlink("runtime", path("link").c_str()) == 0);
        QVERIFY(instanceFolder({{}, path("link")}).path.empty());
        QCOMPARE(instanceFolder({{path("link")}, path("fallback")}).path, path("link"));
        const std::string deep = path(QByteArray(100, 'x'));
        QVERIFY(::mkdir(deep.c_str(), 0700) == 0);
        QCOMPARE(instanceFolder({{deep}, path("fallback")}).path, path("fallback"));
    }

    void lockHasOneHolder()
    {
        const std::string file = path("tessera.lock");
        InstanceLock first;
        InstanceLock second;
        QCOMPARE(first.acquire(file), InstanceLock::State::Held);
        QCOMPARE(second.acquire(file), InstanceLock::State::Busy);
        InstanceLock moved(std::move(first));
        QCOMPARE(second.acquire(file), InstanceLock::State::Busy);
        moved.release();
        QCOMPARE(second.acquire(file), InstanceLock::State::Held);
        QCOMPARE(first.acquire(path("missing/lock")), InstanceLock::State::Failed);
        QVERIFY(::symlink("tessera.lock", path("link").c_str()) == 0);
        QCOMPARE(first.acquire(path("link")), InstanceLock::State::Failed);
    }

    void captionIsFound_data()
    {
        QTest::addColumn<std::string>("prefix");
        QTest::addColumn<std::vector<std::string>>("captions");
        QTest::addColumn<std::string>("found");
        const auto row = [](const char* name, const char* prefix,
                            const std::vector<std::string>& captions, const std::string& found) {
            QTest::newRow(name) << std::string(prefix) << captions << found;
        };
        row("none", "Tessera 5", {"Tessera", "x Tessera 5", ""}, "Tessera 5");
        row("first of two", "Tessera 5", {"x", "TESSERA 5 - [a]", "Tessera 5"}, "TESSERA 5 - [a]");
        row("umlauts", "straße Ö", {"STRAßE ö×"}, "STRAßE ö×");
        row("other letters differ", "×", {"÷"}, "×");
        row("empty prefix", "", {"x"}, "x");
        std::string umlauts;
        for (int i = 0; i < 255; ++i)
            umlauts += "ü";
        row("255 characters", "Ü", {umlauts + "ü"}, umlauts);
    }
    void captionIsFound()
    {
        QFETCH(std::string, prefix);
        QFETCH(std::vector<std::string>, captions);
        QFETCH(std::string, found);
        QCOMPARE(FindAppWindow(prefix, captions), found);
    }

    void commandLine()
    {
        const std::array<const char*, 4> words = {"tessera", "http://a/b", "", "--help"};
        QCOMPARE(commandLineText(4, words.data()), std::string("http://a/b  --help"));
        QCOMPARE(commandLineText(1, words.data()), std::string());
        QCOMPARE(commandLineText(0, words.data()), std::string());
        QCOMPARE(questionOf(4, words.data()), Question::None);
        QCOMPARE(questionOf(1, words.data() + 3), Question::None);
        QCOMPARE(questionOf(2, words.data() + 2), Question::Help);
        QCOMPARE(versionText(), std::string("Tessera 5.3.5\n"));
        QVERIFY(refusal(true, true).empty() && refusal(false, false).empty());
        QVERIFY(refusal(true, false).find("QTWEBENGINE_DISABLE_SANDBOX") != std::string::npos);
    }

    void filesBecomeAbsolute()
    {
        const QString name = QStringLiteral("/ä b%20#?.htm");
        QVERIFY(QFile(m_folder->path() + name).open(QIODevice::WriteOnly));
        QVERIFY(::symlink("nowhere", path("dangling").c_str()) == 0);
        makeFolder("localhost", 0700);
        QCOMPARE(absoluteIfFile("ä b%20#?.htm", path("")), path("ä b%20#?.htm"));
        QCOMPARE(absoluteIfFile("../x", path("localhost")), std::string("../x"));
        QCOMPARE(absoluteIfFile("../ä b%20#?.htm", path("localhost")),
                 path("localhost/../ä b%20#?.htm"));
        for (const std::string same : {"", "dangling", "localhost", "/etc", "http://x/"})
            QCOMPARE(absoluteIfFile(same, path("")), same);
        QCOMPARE(absoluteIfFile(std::string(100000, 'x'), path("")), std::string(100000, 'x'));
    }

private:
    std::string path(const QByteArray& name) const
    {
        return (m_folder->path().toUtf8() + (name.isEmpty() ? "" : "/") + name).toStdString();
    }
    void makeFolder(const QByteArray& name, int mode) const
    {
        if (mode == 0)
            return;
        QCOMPARE(::mkdir(path(name).c_str(), 0700), 0);
        QCOMPARE(::chmod(path(name).c_str(), static_cast<mode_t>(mode)), 0);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_APPLESS_MAIN(StartUpTest)
#include "StartUpTest.moc"
