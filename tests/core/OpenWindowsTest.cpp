#include "app/OpenWindowsFile.h"
#include "tests/Files.h"
#include "tests/TestCase.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {
using State = OpenWindows::State;

OpenWindows sample()
{
    OpenWindows open;
    open.windows = {
        {u"http://a/?ä=\"1\"#[*]"_s, u"Titel \"mit\" \\ und \n"_s, {1, 2, 300, 200}, State::Normal},
        {u"file:///x"_s, {}, {-50, 0, 100, 20}, State::Minimised},
        {u"view-source:http://b/"_s, u"B"_s, {0, 0, 9, 9}, State::Maximised}};
    open.active = 2;
    open.arrangement = Arrangement::Cascade;
    open.frame = {-10, 20, 640, 480};
    open.isFrameMaximised = true;
    return open;
}

} // namespace

/// The file of the open windows.
class OpenWindowsTest : public TestCase {
    Q_OBJECT
private slots:
    void whatIsKeptIsLeft()
    {
        const QString file = path(u"ordner/fenster.json"_s);
        const auto failed = [](const QString& reason) { QFAIL(qPrintable(reason)); };
        {
            OpenWindowsFile kept(file, failed);
            QVERIFY(!kept.left());
            kept.keep(sample());
            kept.keep({});
            kept.keep(sample());
        } // which waits until all is written
        OpenWindowsFile kept(file, failed);
        QVERIFY(kept.left() == sample());
        const QFile::Permissions others = QFile::ReadGroup | QFile::ReadOther;
        QVERIFY(!(QFile::permissions(file) & others));
        kept.remove();
        QVERIFY(QDir(path(u"ordner"_s)).isEmpty());
    }

    void damagedFilesAreIgnored_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray whole = openWindowsToBytes(sample());
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut") << whole.chopped(1);
        QTest::newRow("no JSON") << QByteArray(whole).replace('{', '[');
        for (const auto& [name, from, to] :
             {std::tuple{"another layout", "\"version\":1", "\"version\":2"},
              {"a state that there is not", "\"state\":2", "\"state\":3"},
              {"a place of three numbers", "[0,0,9,9]", "[0,0,9]"},
              {"a place far away", "[0,0,9,9]", "[0,0,9,1e9]"},
              {"an address that is a number", "\"file:///x\"", "1"},
              {"an arrangement that there is not", "\"arrangement\":0", "\"arrangement\":3"}})
            QTest::newRow(name) << QByteArray(whole).replace(from, to);
    }
    void damagedFilesAreIgnored()
    {
        QFETCH(const QByteArray, bytes);
        QVERIFY(bytes != openWindowsToBytes(sample()));
        QVERIFY(!openWindowsFromBytes(bytes));
    }
};

QTEST_GUILESS_MAIN(OpenWindowsTest)
#include "OpenWindowsTest.moc"
