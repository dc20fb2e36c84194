#include "app/CommandLine.h"
#include "app/FindAppWindow.h"
#include "app/InstanceFolder.h"
#include "app/InstanceLock.h"
#include "app/InstanceMessage.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <array>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using Number = InstanceMessage::Number;
using State = InstanceReader::State;

class StartUpTest : public QObject {
    Q_OBJECT
private slots:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void readerTakesPiecesOfAnySize_data()
    {
        QTest::addColumn<std::string>("bytes");
        QTest::addColumn<int>("messages");
        QTest::addColumn<State>("end");
        const std::string good("TSR1\x0F\0\0\0\x03\0\x01\0\0\0t\0\0\0\0\0\0\0\0", 23);
        const auto with = [&](std::size_t place, char byte) {
            return std::string(good).replace(place, 1, 1, byte);
        };
        QTest::newRow("two and a half")
            << good + good + good.substr(0, 9) << 2 << State::Incomplete;
        QTest::newRow("one, then garbage") << good + "x" << 1 << State::Bad;
        QTest::newRow("other version") << with(3, '2') << 0 << State::Bad;
        QTest::newRow("too long announced") << with(6, ' ') << 0 << State::Bad;
        QTest::newRow("unknown number") << with(8, '\x09') << 0 << State::Bad;
        QTest::newRow("text past the end") << with(13, '\xFF') << 0 << State::Bad;
        QTest::newRow("bytes left over") << with(4, '\x10') + "x" << 0 << State::Bad;
    }
    void readerTakesPiecesOfAnySize()
    {
        QFETCH(std::string, bytes);
        for (const std::size_t piece : {std::size_t{1}, bytes.size()}) {
            InstanceReader reader;
            InstanceMessage message;
            State state = State::Incomplete;
            int complete = 0;
            for (std::size_t i = 0; i < bytes.size(); i += piece) {
                reader.feed(std::string_view(bytes).substr(i, piece));
                while ((state = reader.next(message)) == State::Complete)
                    ++complete;
            }
            QTEST(complete, "messages");
            QTEST(state, "end");
        }
    }

    void messagesComeBackUpToTheLimit()
    {
        InstanceMessage message{Number::HandOver, {}, "token", std::string("i\0d", 3)};
        message.text.assign(maxMessageBytes - encodeMessage(message).size(), '\xFF');
        InstanceReader reader;
        reader.feed(encodeMessage(message));
        InstanceMessage read;
        QVERIFY(reader.next(read) == State::Complete && read == message);
        message.text += 'x';
        QVERIFY(encodeMessage(message).empty());
    }

    void folderIsOursAlone()
    {
        const FolderCandidates both{{path("missing"), path("runtime")}, path("fallback")};
        makeFolder("runtime", 0755);
        QCOMPARE(instanceFolder(both).path, path("runtime"));
        QCOMPARE(::chmod(path("runtime").c_str(), 0770), 0);
        QCOMPARE(instanceFolder(both).path, path("fallback"));
        const auto mode = QFile::permissions(QString::fromStdString(path("fallback")));
        QVERIFY((mode & (QFile::ReadOther | QFile::ReadGroup)) == 0);
        QCOMPARE(::chmod(path("fallback").c_str(), 0750), 0);
        const InstanceFolder none = instanceFolder(both);
        QVERIFY(none.path.empty() && !none.error.empty());
    }

    void foreignFoldersAndLinksAreRefused()
    {
        makeFolder("runtime", 0700);
        QVERIFY(::symlink("runtime", path("link").c_str()) == 0);
        QVERIFY(instanceFolder({{}, path("link")}).path.empty());
        const std::string deep = path(std::string(100, 'x')); // too long for a socket
        QVERIFY(::mkdir(deep.c_str(), 0700) == 0);
        QCOMPARE(instanceFolder({{deep}, path("fallback")}).path, path("fallback"));
        if (::chown(path("runtime").c_str(), 65534, 65534) != 0)
            QSKIP("needs root to make somebody else's folder");
        QCOMPARE(instanceFolder({{path("runtime")}, path("fallback")}).path, path("fallback"));
    }

    void lockHasOneHolder()
    {
        const std::string file = path("tessera.lock");
        InstanceLock first;
        InstanceLock second;
        QCOMPARE(first.acquire(file), InstanceLock::State::Held);
        QCOMPARE(second.acquire(file), InstanceLock::State::Busy);
        first.release();
        QCOMPARE(second.acquire(file), InstanceLock::State::Held);
        QVERIFY(::symlink("tessera.lock", path("link").c_str()) == 0);
        QCOMPARE(first.acquire(path("link")), InstanceLock::State::Failed);
    }

    void captionIsFound()
    {
        using Captions = std::vector<std::string>;
        QCOMPARE(FindAppWindow("Tessera 5", Captions{"Tessera", "x Tessera 5", ""}), "Tessera 5");
        QCOMPARE(FindAppWindow("Tessera 5", Captions{"x", "TESSERA 5 - [a]", "Tessera 5"}),
                 "TESSERA 5 - [a]");
        QCOMPARE(FindAppWindow("straße Ö", Captions{"STRAßE ö×"}), "STRAßE ö×");
        const std::string umlauts = QString(255, QChar(u'ü')).toStdString();
        QCOMPARE(FindAppWindow("Ü", Captions{umlauts + "ü"}), umlauts);
    }

    void commandLine()
    {
        const std::array<const char*, 4> words = {"tessera", "http://a/b", "", "--help"};
        QCOMPARE(commandLineText(4, words.data()), std::string("http://a/b  --help"));
        QCOMPARE(questionOf(4, words.data()), Question::None);
        QCOMPARE(questionOf(2, words.data() + 2), Question::Help);
        QVERIFY(refusal(true, true).empty() && refusal(false, false).empty());
        QVERIFY(!refusal(true, false).empty());
    }

    void filesBecomeAbsolute()
    {
        QVERIFY(
            QFile(m_folder->path() + QStringLiteral("/ä b%20#?.htm")).open(QIODevice::WriteOnly));
        makeFolder("localhost", 0700);
        QCOMPARE(absoluteIfFile("ä b%20#?.htm", path()), path("ä b%20#?.htm"));
        QCOMPARE(absoluteIfFile("localhost/", path()), path("localhost/"));
        for (const std::string same : {"", "missing", "localhost", "/etc", "http://x/"})
            QCOMPARE(absoluteIfFile(same, path()), same);
        QCOMPARE(absoluteIfFile(std::string(100000, 'x'), path()), std::string(100000, 'x'));
    }

private:
    std::string path(const std::string& name = {}) const
    {
        return m_folder->path().toStdString() + (name.empty() ? "" : "/") + name;
    }
    void makeFolder(const std::string& name, int mode) const
    {
        QCOMPARE(::mkdir(path(name).c_str(), 0700), 0);
        QCOMPARE(::chmod(path(name).c_str(), static_cast<mode_t>(mode)), 0);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_APPLESS_MAIN(StartUpTest)
#include "StartUpTest.moc"
