#include "tests/e2e/Scenario.h"

#include <QDirIterator>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {
const QString mark = u"Spurenlos4711"_s;

/// Leaves its mark wherever a page can, and then says so to the server. A click opens it once
/// more, in another window.
const char* const marking =
    "<link rel=stylesheet href=/style><a href=/MARK target=_blank style='position:fixed;inset:0'>"
    "</a><script>const known = document.cookie || localStorage.length;"
    "document.title = (known ? 'Bekannt' : 'Fremd') + ' MARK';"
    "document.cookie = 'MARK=MARK; max-age=9999'; localStorage.MARK = 'MARK';"
    "const all = indexedDB.open('MARK'); all.onupgradeneeded = () => "
    "all.result.createObjectStore('MARK').put('MARK', 'MARK'); all.onsuccess = async () => {"
    "await (await caches.open('MARK')).add('/MARK');"
    "await navigator.serviceWorker.register('/worker'); fetch('/stored') }</script>";

/// Becomes the blue page where nothing is known, else the red one.
const char* const looking =
    "<link rel=stylesheet href=/style><script>(async () => {"
    "const found = document.cookie || localStorage.length || (await indexedDB.databases()).length"
    " || (await caches.keys()).length || (await navigator.serviceWorker.getRegistrations()).length;"
    "location.replace(found ? '/red' : '/blue') })()</script>";
} // namespace

/// What private windows keep from others, and from the disk.
class PrivateWindowsTest : public Scenario {
    Q_OBJECT
private slots:
    void nothingIsLeft()
    {
        const QString kept = m_program->home() + u"/.local/share/Tessera/fenster.json"_s;
        const auto cached = [this](const QString& path, QByteArray body, const QByteArray& type) {
            m_server->answer(path, {.body = body.replace("MARK", mark.toLatin1()),
                                    .type = type,
                                    .headers = "Cache-Control: max-age=9999\r\n"});
        };
        cached(u'/' + mark, marking, "text/html");
        cached(u"/worker"_s, "// MARK", "text/javascript");
        cached(u"/style"_s, "/* */", "text/css");
        m_server->page(u"/look"_s, looking);
        QVERIFY(QDir(m_program->home()).mkdir(u"tmp"_s));
        m_program->variable("TMPDIR", m_program->home() + u"/tmp"_s);
        open(u"/red"_s, u"Rot"_s);

        User::press(u"ctrl+shift+n"_s);
        QVERIFY(fills(u"Privates Fenster"_s));
        User::enter(m_server->address(u'/' + mark)); // the address line has the keys
        QTRY_SEES(maximised(u"Fremd %1 (privat)"_s.arg(mark)));
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/stored"_s), 1, patience);
        QTest::qWait(700);
        User::click(User::place(maximised(u"Fremd %1 (privat)"_s.arg(mark))).center());
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/stored"_s), 2, patience);
        QVERIFY(fills(u"Bekannt %1 (privat)"_s.arg(mark)));
        QCOMPARE(m_server->requests(u"/style"_s), 1);

        QCOMPARE(m_program->startAndWait({m_server->address(u"/look"_s)}), 0);
        QVERIFY(fills(u"Blau"_s));
        QCOMPARE(m_server->requests(u"/style"_s), 2);
        QTRY_VERIFY_WITH_TIMEOUT(bytesOf(kept).contains("Blau"), patience);
        QTest::qWait(3000); // the engine writes late
        QCOMPARE(traces(), QStringList());

        const int before = m_server->requests(u'/' + mark);
        User::press(u"ctrl+2 ctrl+w ctrl+2 ctrl+w ctrl+shift+t"_s);
        QTest::qWait(1000);
        QCOMPARE(m_server->requests(u'/' + mark), before); // it does not come back
        User::press(u"ctrl+shift+n"_s);
        QVERIFY(fills(u"Privates Fenster"_s));
        User::enter(m_server->address(u"/look"_s));
        QTRY_SEES(maximised(u"Blau (privat)"_s));
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/style"_s), 3, patience);
        User::press(u"ctrl+q"_s);
        QVERIFY(hasEnded());
        QCOMPARE(m_run->exitCode(), 0);
        QCOMPARE(traces(), QStringList());
    }

    void whatPrivatePagesOpenIsPrivate()
    {
        m_server->page(u"/link"_s, "<title>Link</title><a href=/red style='position:fixed;"
                                   "inset:0'></a>");
        open(u"/link"_s, u"Link"_s);
        User::press(u"Tab Menu p"_s);
        QVERIFY(fills(u"Rot (privat)"_s));
        User::typeAddress(m_server->address(u"/link"_s));
        QTRY_SEES(maximised(u"Link (privat)"_s));
        QTest::qWait(700);
        User::press(u"Tab Menu n"_s);
        QVERIFY(fills(u"Rot (privat)"_s));

        User::press(u"ctrl+w ctrl+1 ctrl+w"_s); // the private page with the link stays
        User::press(u"alt+f k"_s);
        QTRY_SEES(title());
        QTest::qWait(700);
        const QRect frame = User::place(title());
        User::carry(frame.topLeft() + QPoint(100, 170), frame.bottomRight() - QPoint(15, 25));
        QVERIFY(fills(u"Rot (privat)"_s));
    }

private:
    /// Has the active window, which has just come, fill the frame; whether it gets this caption.
    static bool fills(const QString& caption)
    {
        const auto sees = [](const QString& text) {
            return QTest::qWaitFor([&] { return User::sees(text); }, patience);
        };
        if (!sees(title())) // until it has been arranged
            return false;
        QTest::qWait(300);
        User::press(u"alt+minus x"_s);
        return sees(maximised(caption));
    }
    /// The files of the program and its engine that the mark is found in.
    QStringList traces() const
    {
        const auto marked = [](const QString& file) {
            const QByteArray bytes = bytesOf(file);
            const QByteArray wide(reinterpret_cast<const char*>(mark.utf16()), 2 * mark.size());
            return file.contains(mark) || bytes.contains(mark.toLatin1()) || bytes.contains(wide);
        };
        QStringList all;
        for (const QString& folder : {m_program->home(), m_program->file(u"."_s)})
            for (QDirIterator files(folder, QDir::Files | QDir::Hidden | QDir::System,
                                    QDirIterator::Subdirectories);
                 files.hasNext();)
                if (marked(files.next()))
                    all << files.filePath();
        return all;
    }
};

QTEST_MAIN(PrivateWindowsTest)
#include "PrivateWindowsTest.moc"
