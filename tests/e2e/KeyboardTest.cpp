#include "tests/core/SampleArchive.h"
#include "tests/e2e/Scenario.h"

#include <QGuiApplication>
#include <QtTest>

using namespace Qt::StringLiterals;

/// What can be done without the mouse, and where the focus is: tried where the frame,
/// the engine, the toolkit and the window manager meet.
class KeyboardTest : public Scenario {
    Q_OBJECT
private slots:
    /// The engine takes another widget for a page of another site, and the toolkit
    /// passes the focus of the old one on as Tab does.
    void aPageOfAnotherSiteFocusesNoLink()
    {
        tell("Eins");
        tell("Zwei");
        open(u"/red"_s, u"Rot"_s);
        const auto go = [&](const QString& page, const QString& host) {
            User::typeAddress(m_server->address(u'/' + page, host));
            User::press(u"Return"_s);
        };
        go(u"Eins"_s, u"localhost"_s); // from a page without a link, then from one with a link
        QVERIFY(reaches(u"Eins"_s));
        User::press(u"Return"_s);
        go(u"Zwei"_s, u"127.0.0.1"_s);
        QVERIFY(reaches(u"Zwei"_s));
        User::press(u"Return alt+Left"_s);
        QVERIFY(reaches(u"Eins"_s));
        QCOMPARE(m_server->requests(u"/focus"_s) + m_server->requests(u"/followed"_s), 0);
        QCOMPARE(keys(u"Eins"_s, u"Tab"_s) + keys(u"Zwei"_s, u"Tab"_s), 0);
        User::press(u"ctrl+l Tab"_s); // this is meant for the link
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/focus"_s), 1, patience);
        User::press(u"Return"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/followed"_s), 1, patience);
    }

    /// Twice given, a key of the frame goes to nobody, and the toolkit warns.
    void keysOfTheFrameWorkFromEverywhere()
    {
        tell("Eins");
        open(u"/Eins"_s, u"Eins"_s);
        const QPoint middle = User::place(maximised(u"Eins"_s)).center();
        // In the menu bar, which keeps the focus; in the page; in the address line.
        for (const auto& [from, close] : {std::pair{u"alt+d Escape"_s, u"alt+d Escape ctrl+w"_s},
                                          {u"F10 Escape"_s, u"alt+x Escape ctrl+F4"_s},
                                          {u"x"_s, u"ctrl+w"_s}}) {
            User::press(from + u" ctrl+n"_s);
            QTRY_SEES(title());
            QVERIFY(!reaches(u"Eins"_s, u"k"_s, {}, 1));
            User::press(close);
            QVERIFY(reaches(u"Eins"_s));
        }
        // With no window the menu disables what closes one, and is not asked again.
        User::press(u"ctrl+l ctrl+n ctrl+l ctrl+F4 ctrl+w alt+f Escape Escape ctrl+w"_s);
        const QColor empty = User::colourAt(middle);
        for (const auto& open : {u"ctrl+n"_s, u"shift+F10 Down Return"_s}) {
            User::press(open);
            QTRY_VERIFY_WITH_TIMEOUT(User::colourAt(middle) != empty, patience);
            User::press(u"ctrl+w"_s);
            QTRY_COLOUR(middle, empty);
        }
        User::press(u"alt+d Escape ctrl+q"_s);
        QVERIFY(hasEnded());
    }

    void browserWindowsNeedNoMouse()
    {
        tell("Eins");
        tell("Zwei", "blue");
        open(u"/Eins"_s, u"Eins"_s);
        const QRect frame = User::place(maximised(u"Eins"_s));
        add(u"Zwei"_s);
        QVERIFY(reaches(u"Zwei"_s, u"-"_s, u"minus"_s));
        QPoint edge(frame.x() + 13, frame.bottom() - 40); // the lower window's left one
        QTRY_COLOUR(edge, Qt::blue);
        User::press(u"alt+minus v Right Right Escape"_s);
        QTRY_COLOUR(edge, Qt::blue);
        User::press(u"alt+minus v Right Right Return"_s);
        QTRY_VERIFY_WITH_TIMEOUT(User::colourAt(edge) != QColor(Qt::blue), patience);
        edge.rx() += 20;
        QTRY_COLOUR(edge, Qt::blue);
        QVERIFY(reaches(u"Zwei"_s));
        edge.setX(frame.right() - 60);
        User::press(u"alt+minus g Left Left Left Left Left Left Left Left Return"_s);
        QTRY_VERIFY_WITH_TIMEOUT(User::colourAt(edge) != QColor(Qt::blue), patience);
        QVERIFY(reaches(u"Zwei"_s));
        User::press(u"alt+minus x"_s);
        QTRY_SEES(maximised(u"Zwei"_s));
        User::press(u"alt+minus w"_s);
        QTRY_SEES(title());
        for (const auto& back : {u"alt+f 2"_s, u"ctrl+Tab"_s}) {
            User::press(u"alt+minus n"_s);
            QVERIFY(reaches(u"Eins"_s)); // a symbol takes no keys
            User::press(back);
            QVERIFY(reaches(u"Zwei"_s));
        }
        add(u"Eins"_s);
        User::press(u"alt+f 2 ctrl+w"_s);
        QVERIFY(reaches(u"Eins"_s));
        QCOMPARE(keys(u"Zwei"_s, u"-"_s), 1);
    }

    /// The toolkit hides a window for a moment when its state changes.
    void aChangedWindowKeepsTheFocus()
    {
        tell("Eins");
        tell("Zwei");
        open(u"/Zwei"_s, u"Zwei"_s);
        User::typeAddress(m_server->address(u"/Eins"_s));
        QString page = u"Eins"_s;
        QString before = u"Zwei"_s;
        QVERIFY(reaches(page));
        for (const auto& change : {u"alt+f u alt+minus x"_s, u"alt+minus w alt+f k alt+minus x"_s,
                                   u"alt+minus n alt+minus x"_s}) {
            User::press(change);
            QVERIFY(reaches(page, u"k"_s, {}, 1));
            User::press(u"ctrl+l Down "_s + change + u" Return"_s);
            std::swap(page, before);
            QVERIFY(reaches(page));
        }
        QCOMPARE(m_server->requests(u"/focus"_s), 0);
    }

    void theAddressLine()
    {
        tell("Eins");
        tell("Zwei");
        open(u"/Eins"_s, u"Eins"_s);
        const auto loads = [this] { return m_server->requests(u"/Eins"_s); };
        for (const auto& leave : {u"Escape"_s, u"Tab ctrl+l"_s}) {
            const int before = loads();
            User::press(u"ctrl+l u n s i n n "_s + leave + u" Return"_s);
            QTRY_COMPARE_WITH_TIMEOUT(loads(), before + 1, patience);
            QVERIFY(reaches(u"Eins"_s));
        }
        User::press(u"shift+F10 a"_s); // the page's own menu
        QTRY_COMPARE_WITH_TIMEOUT(loads(), 4, patience);
        User::press(u"alt+f a a ctrl+l"_s); // away, and back again
        User::enter(m_server->address(u"/Zwei"_s));
        QTRY_SEES(maximised(u"Zwei"_s));
        User::press(u"ctrl+l shift+F10 a"_s); // that of the line: cut
        QTRY_COMPARE_WITH_TIMEOUT(User::clipboard(), m_server->address(u"/Zwei"_s), patience);
    }

    void aPageAsksInTheActiveWindowWhetherItMayClose()
    {
        tell("Eins", "white' onbeforeunload='return false");
        tell("Zwei", "blue' onbeforeunload='return false");
        open(u"/Eins"_s, u"Eins"_s);
        QVERIFY(reaches(u"Eins"_s));
        add(u"Zwei"_s);
        User::press(u"alt+minus x"_s);
        QTRY_SEES(maximised(u"Zwei"_s));
        const QRect frame = User::place(maximised(u"Zwei"_s));
        const QPoint upper = frame.topLeft() + QPoint(40, frame.height() * 2 / 5 + 20);
        User::press(u"alt+f s"_s);
        QStringList active;
        for (int i = 0; i < 2; ++i) { // in which order the engine has them asked is open
            QTRY_SEES(m_server->address({}));
            QTest::qWait(3000); // longer than a page is waited for that does not ask
            active << (User::colourAt(upper) == QColor(Qt::blue) ? u"Zwei"_s : u"Eins"_s);
            User::press(u"Escape"_s);
            QTest::qWait(1000);
        }
        active.sort();
        QCOMPARE(active, QStringList({u"Eins"_s, u"Zwei"_s}));
        for (const auto& [key, page] :
             {std::pair{u"ctrl+1"_s, u"Eins"_s}, {u"ctrl+2"_s, u"Zwei"_s}}) {
            User::press(key); // they stay
            QVERIFY(reaches(page));
        }
    }

    void theHistory()
    {
        tell("Eins");
        tell("Zwei");
        open(u"/Eins"_s, u"Eins"_s);
        User::typeAddress(m_server->address(u"/Zwei"_s));
        QTRY_SEES(maximised(u"Zwei"_s));
        // By address: Eins, Zwei. What Enter marks is what the next window opens.
        for (const auto& [keys, page] :
             {std::pair{u"Down"_s, u"/Eins"_s}, {u"ctrl+End"_s, u"/Zwei"_s}}) {
            User::press(u"alt+x h"_s);
            QTRY_SEES(u"Historie"_s);
            const int before = m_server->requests(page);
            User::press(u"alt+t s a "_s + keys + u" Return"_s);
            QTRY_VERIFY_WITH_TIMEOUT(!User::sees(u"Historie"_s), patience);
            User::press(u"ctrl+n"_s);
            QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(page), before + 1, patience);
        }
        const auto loads = [this] {
            return m_server->requests(u"/Eins"_s) + m_server->requests(u"/Zwei"_s);
        };
        User::press(u"ctrl+h"_s);
        QTRY_SEES(u"Historie"_s);
        const int before = loads();
        User::click(User::place(u"Historie"_s).topLeft() + QPoint(60, 65),
                    2); // the mouse opens at once
        QTRY_COMPARE_WITH_TIMEOUT(loads(), before + 1, patience);
    }

    void theArchiveIsTakenBack()
    {
        const QString file = m_program->file(u"1.bkm"_s);
        const QString index = m_program->file(u"Book.bkm"_s);
        const QString archive = u"Bookmark Archiv"_s;
        storeArchive(m_program->file(u"."_s),
                     {{u"eins"_s, u"http://h/"_s}, {u"zwei"_s, u"http://h/"_s}});
        const QByteArray folder = bytesOf(file);
        open(u"/red"_s, u"Rot"_s);
        User::press(u"ctrl+shift+o"_s);
        QTRY_SEES(archive);
        User::press(u"Down Down alt+m o l"_s);
        QTRY_SEES(u"Meldung"_s);
        User::press(u"Return"_s);
        QTRY_COMPARE_WITH_TIMEOUT(bytesOf(index).size(), 0, patience);
        QVERIFY(QFile::remove(file)); // it is deleted in the program's current folder only
        User::press(u"ctrl+z"_s);
        QTRY_COMPARE_WITH_TIMEOUT(bytesOf(index).size(), themaRecordSize, patience);
        QCOMPARE(bytesOf(file), folder);
        // In the line that finds and in a label, Ctrl+Z is for what is typed.
        User::press(u"Right Down Delete ctrl+f x ctrl+z Escape Home Down F2 y ctrl+z Return"_s);
        User::press(u"alt+a s"_s);
        QTRY_COMPARE_WITH_TIMEOUT(bytesOf(file).size(), bookmarkRecordSize, patience);
        QVERIFY(bytesOf(file).contains("zwei") && bytesOf(index).contains("Ordner"));
        User::press(u"Down Down Right Down Delete ctrl+z ctrl+shift+z ctrl+z Escape"_s);
        QTRY_VERIFY_WITH_TIMEOUT(!User::sees(archive), patience); // asks nothing: all is saved
    }

    void furtherKeysOfTheFrame()
    {
        tell("Eins");
        tell("Zwei");
        open(u"/Eins"_s, u"Eins"_s);
        const int loads = m_server->requests(u"/Eins"_s);
        User::press(u"ctrl+r"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_server->requests(u"/Eins"_s), loads + 1, patience);
        add(u"Zwei"_s);
        User::press(u"ctrl+1"_s);
        QVERIFY(reaches(u"Eins"_s));
        User::press(u"ctrl+9 ctrl+2"_s);
        QVERIFY(reaches(u"Zwei"_s));
        for (const auto& [key, window] : {std::pair{u"ctrl+h"_s, u"Historie"_s},
                                          {u"ctrl+shift+o"_s, u"Bookmark Archiv"_s},
                                          {u"F12"_s, u"Entwicklerwerkzeuge: Zwei"_s}}) {
            User::press(key);
            QTRY_SEES(window);
            User::press(key == "F12"_L1 ? key : u"Escape"_s);
            QTRY_VERIFY_WITH_TIMEOUT(!User::sees(window), patience);
            QVERIFY(reaches(u"Zwei"_s)); // the frame has the keys again
        }
        User::press(u"ctrl+u alt+minus x"_s);
        const QString source = m_server->address(u"/Zwei"_s).replace(u"http"_s, u"view-source"_s);
        QTRY_SEES(maximised(source.section(u"//"_s, 0, 0) + source.section(u"//"_s, 1)));
        User::press(u"ctrl+w ctrl+s"_s);
        QTRY_SEES(u"Datei speichern unter"_s);
    }

    void closedWindowsComeBack()
    {
        tell("Eins");
        tell("Zwei");
        open(u"/Eins"_s, u"Eins"_s);
        User::typeAddress(m_server->address(u"/Zwei"_s));
        QVERIFY(reaches(u"Zwei"_s));
        add(u"Eins"_s);
        User::press(u"ctrl+1 ctrl+w"_s);
        QVERIFY(reaches(u"Eins"_s));
        User::press(u"ctrl+shift+t"_s);
        QVERIFY(reaches(u"Zwei"_s));
        const int before = keys(u"Eins"_s, u"q"_s);
        User::press(u"alt+Left"_s);
        QVERIFY(reaches(u"Eins"_s, u"q"_s));
        User::press(u"alt+Right"_s);
        QVERIFY(reaches(u"Zwei"_s));
        User::press(u"ctrl+shift+t ctrl+1 q"_s); // there is none more: the other one is first
        QTRY_VERIFY_WITH_TIMEOUT(keys(u"Eins"_s, u"q"_s) > before + 1, patience);
    }

    void theFrameFillsTheScreen()
    {
        open(u"/red"_s, u"Rot"_s);
        const QRect before = User::place(maximised(u"Rot"_s));
        const QPoint bottom = QGuiApplication::primaryScreen()->geometry().bottomLeft();
        const QPoint upper(20, 60); // a page without bars, or a bar
        const auto full = [&](const char* colour) {
            return QTest::qWaitFor(
                [&] {
                    return User::colourAt(upper) == QColor(colour) &&
                           User::colourAt(bottom + QPoint(9, -9)) == QColor(colour);
                },
                patience);
        };
        User::press(u"F11"_s);
        QVERIFY(full("#ff0000"));
        User::moveTo({300, 0});
        QTRY_VERIFY_WITH_TIMEOUT(User::colourAt(upper) != QColor(u"#ff0000"_s), patience);
        User::moveTo({300, 600});
        QVERIFY(full("#ff0000"));
        User::press(u"ctrl+l"_s);
        QTRY_VERIFY_WITH_TIMEOUT(User::colourAt(upper) != QColor(u"#ff0000"_s), patience);
        QTest::qWait(1500); // a bar that is in use stays
        User::enter(m_server->address(u"/blue"_s));
        QVERIFY(full("#0000ff"));
        User::press(u"ctrl+n ctrl+w alt+minus x"_s);
        QVERIFY(full("#0000ff"));
        User::press(u"F11"_s);
        QTRY_COMPARE_WITH_TIMEOUT(User::place(maximised(u"Blau"_s)), before, patience);
        // The size beneath the full screen is the one that is kept.
        User::press(u"F11"_s);
        QVERIFY(full("#0000ff"));
        User::press(u"ctrl+q"_s);
        QVERIFY(hasEnded());
        open(u"/red"_s, u"Rot"_s);
        QCOMPARE(User::place(maximised(u"Rot"_s)).size(), before.size());
    }

private:
    void add(const QString& page)
    {
        QCOMPARE(m_program->startAndWait({m_server->address(u'/' + page)}), 0);
        QVERIFY(reaches(page));
    }
    /// A page that begins with a link, and tells the server of each key and of a focus
    /// in the link.
    void tell(const char* name, const QByteArray& colour = "white")
    {
        const QByteArray script = "onkeydown = e => fetch('/" + QByteArray(name) +
                                  "/' + e.key);"
                                  "addEventListener('focusin', () => fetch('/focus'))";
        m_server->page(u'/' + QString::fromLatin1(name),
                       QByteArray("<title>") + name + "</title><body style='background:" + colour +
                           "'><a href=/followed>Link</a><script>" + script + "</script>");
    }
    int keys(const QString& page, const QString& key) const
    {
        return m_server->requests(u'/' + page + u'/' + key);
    }
    /// Whether a key gets to the page, which may have to come up yet.
    bool reaches(const QString& page, const QString& key = u"k"_s, const QString& name = {},
                 int tries = 8)
    {
        const int before = keys(page, key);
        for (int i = 0; i < tries; ++i) {
            User::press(name.isEmpty() ? key : name);
            if (QTest::qWaitFor([&] { return keys(page, key) > before; }, 800))
                return true;
        }
        return false;
    }
};

QTEST_MAIN(KeyboardTest)
#include "KeyboardTest.moc"
