#include "bookmarks/ArchiveRecords.h"
#include "tests/e2e/Scenario.h"

#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocalSocket>
#include <QtEndian>

using namespace Qt::StringLiterals;

// A page may be white once more when it gets its size: once is enough.
#define QTRY_SOON(condition)                                                                       \
    QVERIFY2(QTest::qWaitFor([&] { return condition; }, 3 * patience), #condition)

namespace {

/// A connection by a protocol that is spoken in its own bytes.
struct Wire : QLocalSocket {
    explicit Wire(const QString& path) { connectToServer(path); }
    QByteArray next(qint64 size)
    {
        while (bytesAvailable() < size && waitForReadyRead(patience)) {
        }
        return read(size);
    }
    QByteArray nextUpTo(const QByteArray& end)
    {
        QByteArray heard;
        while (!heard.endsWith(end) && (bytesAvailable() > 0 || waitForReadyRead(patience)))
            heard += read(1);
        return heard;
    }
};

QByteArray words(std::initializer_list<quint32> numbers)
{
    return {reinterpret_cast<const char*>(numbers.begin()), qsizetype(numbers.size() * 4)};
}

/// With it a window may come to the front: asked for as desktops do, by xdg-activation.
QString activationToken()
{
    enum : quint32 { Connection = 1, Registry, Activation, Token };
    const auto head = [](quint32 object, quint32 size, quint32 request) {
        return words({object, size << 16 | request});
    };
    Wire wire(qEnvironmentVariable("WAYLAND_DISPLAY"));
    wire.write(head(Connection, 12, 1) + words({Registry}));
    const QByteArray name("xdg_activation_v1\0\0\0", 20);
    const QByteArray globals = wire.nextUpTo(name);
    wire.write(head(Registry, 44, 0) + globals.right(28).first(4) + globals.right(24) +
               words({1, Activation}) + head(Activation, 12, 1) + words({Token}) +
               head(Token, 8, 3));
    wire.nextUpTo(words({Token}) + QByteArray(2, 0));
    const qint64 length = wire.next(6).at(2) - 1;
    return QString::fromLatin1(wire.next(length));
}

QByteArray outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

} // namespace

/// The program under a Wayland compositor, with a real pointer and real keys.
class WaylandTest : public QObject {
    Q_OBJECT
private slots:
    /// Pointer and keys come by the protocol for remote desktops (RFB 3.8).
    void initTestCase()
    {
        m_hands.next(12);
        m_hands.write("RFB 003.008\n");
        m_hands.next(m_hands.next(1).at(0));
        m_hands.write("\1"); // without a password
        m_hands.next(4);
        m_hands.write("\1");
        const QByteArray screen = m_hands.next(24);
        QCOMPARE(screen.size(), 24);
        m_hands.next(screen.back());
    }

    void menusDragsAndSecondStarts()
    {
        m_server.page(u"/link"_s,
                      "<title>Link</title><body style='margin:0;background:#f00'>"
                      "<style>a{display:block;height:100vh}a:hover{background:#0f0}</style>"
                      "<a href=/ziel ondragstart='this.style.background=\"#00f\"'></a>");
        m_server.page(u"/ziel"_s, "<body style='background:#0ff'>");
        writeBytes(m_program.file(u"Book.bkm"_s),
                   writeThemaRecords({{1, 1, u"Ordner"_s, u"1.bkm"_s}}));
        writeBytes(m_program.file(u"1.bkm"_s), {});
        const QString frame = u"Tessera 5.3.5 - [Link]"_s;
        const QString archive = u"Bookmark Archiv"_s;

        m_program.start(m_run, {m_server.address(u"/link"_s)});
        QTRY_SOON(hasKeys(frame));
        sway(u"move position 0 0"_s);
        const QPoint link(300, 300);
        QTRY_SOON(colourAt(link) == u"#ff0000"_s);
        QVERIFY(isWithoutSandbox() || pagesAreInTheSandbox(m_run.processId()));
        click({80, 9}); // the second menu, over the page
        const auto covers = [](const QStringList& colours) {
            return colours[0] == u"#ff0000"_s && colours[1] != u"#ff0000"_s;
        };
        const QList<QPoint> besideAndUnder{link, {180, 95}};
        QTRY_SOON(covers(coloursAt(besideAndUnder)));
        click({100, 31}); // its first item
        QTRY_SOON(hasKeys(archive));
        sway(u"move position 700 0"_s);
        const QPoint folder(1040, 46); // right of its name, and of what is carried
        QTRY_SOON(colourAt(folder) == u"#ffffff"_s);

        // A page that has just come drops what the pointer does.
        int step = 0;
        const auto wobble = [&](const QPoint& place, bool isHeld) {
            point(place + QPoint(++step % 40, 0), isHeld);
            return true;
        };
        QTRY_SOON(wobble(link, false) && colourAt(link) == u"#00ff00"_s);
        point(link, true);
        QTRY_SOON(wobble(link, true) && colourAt({20, 400}) == u"#0000ff"_s);
        const QPoint name = folder - QPoint(280, 0);
        QTRY_SOON(wobble(name, true) && colourAt(folder) != u"#ffffff"_s);
        point(name, false);
        QTRY_SOON(colourAt(folder + QPoint(0, 18)) != u"#ffffff"_s); // what is in it

        sway(u"workspace 2"_s);
        QTRY_SOON(!window(frame)[u"visible"_s].toBool());
        m_program.variable("XDG_ACTIVATION_TOKEN", activationToken());
        QCOMPARE(m_program.startAndWait({}), 0);
        QTRY_SOON(hasKeys(frame));
        press({0xFFE3, 'n'});                   // with Ctrl
        QTRY_SOON(hasKeys(u"Tessera 5.3.5"_s)); // no window fills it any more
        QCOMPARE(m_program.startAndWait({m_server.address(u"/ziel"_s)}), 0);
        QTRY_SOON(m_server.requests(u"/ziel"_s) == 1);

        m_run.terminate();
        QTRY_SOON(hasKeys(u"Meldung"_s));
        press({0xFF0D}); // the archive is saved
        QVERIFY(m_run.waitForFinished(3 * patience));
        QVERIFY(bytesOf(m_program.file(u"1.bkm"_s)).contains("/ziel"));
    }

    void cleanup()
    {
        if (QTest::currentTestFailed())
            outputOf(u"grim"_s, {QDir::home().filePath(u"WaylandTest.png"_s)});
        m_run.kill();
        m_run.waitForFinished();
        const QStringList lines = QString::fromUtf8(m_run.readAll()).split(u'\n');
        for (const QString& line : lines)
            QVERIFY2(isOfEngine(line), qPrintable(line));
    }

private:
    /// What the compositor knows of the window with this title at or below a node.
    static QJsonObject window(const QString& title, const QJsonObject& node = tree())
    {
        QJsonObject found;
        if (node[u"pid"_s].toInt() != 0 && node[u"name"_s] == title)
            found = node;
        for (const QString& list : {u"nodes"_s, u"floating_nodes"_s}) {
            const QJsonArray below = node[list].toArray();
            for (qsizetype i = 0; i < below.size() && found.isEmpty(); ++i)
                found = window(title, below[i].toObject());
        }
        return found;
    }
    static QJsonObject tree()
    {
        return QJsonDocument::fromJson(sway(u"--raw --type get_tree"_s)).object();
    }
    static QByteArray sway(const QString& words)
    {
        return outputOf(u"swaymsg"_s, words.split(u' '));
    }
    static bool hasKeys(const QString& title) { return window(title)[u"focused"_s].toBool(); }
    static QStringList coloursAt(const QList<QPoint>& places)
    {
        const QImage seen = QImage::fromData(outputOf(u"grim"_s, {u"-t"_s, u"ppm"_s, u"-"_s}));
        QStringList colours;
        for (const QPoint& place : places)
            colours << seen.pixelColor(place).name();
        return colours;
    }
    static QString colourAt(const QPoint& place) { return coloursAt({place}).first(); }

    void point(const QPoint& place, bool isHeld)
    {
        const std::array numbers{qToBigEndian(quint16(place.x())),
                                 qToBigEndian(quint16(place.y()))};
        m_hands.write(QByteArray("\5", 1) + char(isHeld) +
                      QByteArray(reinterpret_cast<const char*>(numbers.data()), sizeof numbers));
        m_hands.flush();
    }
    void click(const QPoint& place)
    {
        for (const bool isHeld : {false, true, false})
            point(place, isHeld);
    }
    /// Presses keys together, by their numbers in X11.
    void press(const QList<quint32>& keys)
    {
        for (const bool isDown : {true, false})
            for (const quint32 key : keys)
                m_hands.write(QByteArray("\4", 1) + char(isDown) + QByteArray(2, 0) +
                              words({qToBigEndian(key)}));
        m_hands.flush();
    }

    LoopbackServer m_server;
    Installation m_program;
    QProcess m_run;
    Wire m_hands{qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/hands"_s};
};

QTEST_GUILESS_MAIN(WaylandTest)
#include "WaylandTest.moc"
