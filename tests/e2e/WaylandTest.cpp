#include "tests/core/SampleArchive.h"
#include "tests/e2e/Scenario.h"
#include "tests/e2e/WaylandDesk.h"

#include <QtTest>

using namespace Qt::StringLiterals;

// A page may be white once more when it gets its size: once is enough.
#define QTRY_SOON(condition)                                                                       \
    QVERIFY2(QTest::qWaitFor([&] { return condition; }, 3 * patience), #condition)

namespace {

/// With it a window may come to the front: asked for as desktops do, by xdg-activation.
QString activationToken()
{
    enum : quint32 { Connection = 1, Registry, Activation, Token };
    const auto head = [](quint32 object, quint32 size, quint32 request) {
        return Wire::words({object, size << 16 | request});
    };
    Wire wire(qEnvironmentVariable("WAYLAND_DISPLAY"));
    wire.write(head(Connection, 12, 1) + Wire::words({Registry}));
    const QByteArray name("xdg_activation_v1\0\0\0", 20);
    const QByteArray globals = wire.nextUpTo(name);
    wire.write(head(Registry, 44, 0) + globals.right(28).first(4) + globals.right(24) +
               Wire::words({1, Activation}) + head(Activation, 12, 1) + Wire::words({Token}) +
               head(Token, 8, 3));
    wire.nextUpTo(Wire::words({Token}) + QByteArray(2, 0));
    const qint64 length = wire.next(6).at(2) - 1;
    return QString::fromLatin1(wire.next(length));
}

} // namespace

/// What is another thing under a Wayland compositor: where menus open, what is dragged from one
/// window of the program to another, and how a second start brings the first one to the front.
class WaylandTest : public Scenario {
    Q_OBJECT
private slots:
    void menusDragsAndSecondStarts()
    {
        m_server->page(u"/link"_s,
                       "<title>Link</title><body style='margin:0;background:#f00'>"
                       "<style>a{display:block;height:100vh}a:hover{background:#0f0}</style>"
                       "<a href=/ziel ondragstart='this.style.background=\"#00f\"'></a>");
        m_server->page(u"/ziel"_s, "<body style='background:#0ff'>");
        storeArchive(m_program->file(u"."_s), {});
        const QString frame = maximised(u"Link"_s);
        const QString archive = u"Bookmark Archiv"_s;

        open(u"/link"_s, u"Link"_s);
        User::move(frame, {0, 0});
        const QPoint link(300, 300);
        QTRY_SOON(colourAt(link) == u"#ff0000"_s);
        User::click({80, 9}); // the second menu, over the page
        const auto covers = [](const QStringList& colours) {
            return colours[0] == u"#ff0000"_s && colours[1] != u"#ff0000"_s;
        };
        QTRY_SOON(covers({colourAt(link), colourAt({180, 95})}));
        User::click({100, 31}); // its first item
        QTRY_SOON(User::activeWindow() == archive);
        User::move(archive, {700, 0});
        const QPoint folder(1040, 46); // right of its name, and of what is carried
        QTRY_SOON(colourAt(folder) == u"#ffffff"_s);

        // A page that has just come drops what the pointer does.
        auto wobble = [step = 0](const QPoint& place) mutable {
            User::moveTo(place + QPoint(++step % 40, 0));
            return true;
        };
        QTRY_SOON(wobble(link) && colourAt(link) == u"#00ff00"_s);
        Desk::here().hold(1, true);
        QTRY_SOON(wobble(link) && colourAt({20, 400}) == u"#0000ff"_s);
        const QPoint name = folder - QPoint(280, 0);
        QTRY_SOON(wobble(name) && colourAt(folder) != u"#ffffff"_s);
        Desk::here().hold(1, false);
        QTRY_SOON(colourAt(folder + QPoint(0, 18)) != u"#ffffff"_s); // what is in it

        WaylandDesk::sway(u"workspace 2"_s);
        QTRY_SOON(!User::sees(frame));
        m_program->variable("XDG_ACTIVATION_TOKEN", activationToken());
        QCOMPARE(m_program->startAndWait({}), 0);
        QTRY_SOON(User::activeWindow() == frame);
        User::press(u"ctrl+n"_s);
        QTRY_SOON(User::activeWindow() == title()); // no window fills it any more
        QCOMPARE(m_program->startAndWait({m_server->address(u"/ziel"_s)}), 0);
        QTRY_SOON(m_server->requests(u"/ziel"_s) == 1);

        m_run->terminate();
        QTRY_SOON(User::activeWindow() == u"Meldung"_s);
        User::press(u"Return"_s); // the archive is saved
        QVERIFY(hasEnded());
        QVERIFY(bytesOf(m_program->file(u"1.bkm"_s)).contains("/ziel"));
    }

private:
    static QString colourAt(const QPoint& place) { return User::colourAt(place).name(); }
};

QTEST_MAIN(WaylandTest)
#include "WaylandTest.moc"
