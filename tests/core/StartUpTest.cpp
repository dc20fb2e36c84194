#include "launcher/CommandLine.h"
#include "launcher/InstanceMessage.h"
#include "launcher/InstancePlace.h"
#include "tests/TestCase.h"

#include <array>
#include <sys/stat.h>
#include <unistd.h>

using State = InstanceReader::State;

class StartUpTest : public TestCase {
    Q_OBJECT
private slots:
    void readerTakesPiecesOfAnySize()
    {
        const std::string good("TSR1\x0F\0\0\0\x03\0\x01\0\0\0t\0\0\0\0\0\0\0\0", 23);
        const auto with = [&](std::size_t place, char byte) {
            return std::string(good).replace(place, 1, 1, byte);
        };
        expectRead(good + good + good.substr(0, 9), 2, State::Incomplete);
        expectRead(good + "x", 1, State::Bad);
        expectRead(with(6, ' '), 0, State::Bad);          // too long announced
        expectRead(with(13, '\xFF'), 0, State::Bad);      // a text past the end
        expectRead(with(4, '\x10') + "x", 0, State::Bad); // bytes left over
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
    static void expectRead(const std::string& bytes, int messages, State end)
    {
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
            QCOMPARE(complete, messages);
            QCOMPARE(state, end);
        }
    }
    std::string path(const std::string& name = {}) const
    {
        return TestCase::path().toStdString() + (name.empty() ? "" : "/") + name;
    }
    void makeFolder(const std::string& name, int mode) const
    {
        QCOMPARE(::mkdir(path(name).c_str(), 0700), 0);
        QCOMPARE(::chmod(path(name).c_str(), static_cast<mode_t>(mode)), 0);
    }
};

QTEST_APPLESS_MAIN(StartUpTest)
#include "StartUpTest.moc"
