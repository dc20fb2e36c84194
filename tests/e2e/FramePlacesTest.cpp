#include "base/Prefer.h"
#include "base/Twips.h"
#include "tests/e2e/Scenario.h"

#include <QGuiApplication>
#include <QScreen>
#include <QtTest>

using namespace Qt::StringLiterals;

namespace {

constexpr int narrow = 9; // less than a scroll bar
constexpr int low = 60;   // less than a page, more than the status bar
constexpr int menuHeight = 22;
constexpr QPoint restoreButton(-32, 9); // in the menu bar, from its end

/// What the frame shows of pages, all blue, and of the grey area behind them.
struct Sight {
    /// From the frame's right and lower edge to the first page.
    QSize margin;
    int grey = 0;
};

Sight sightOf(const QRect& frame)
{
    const QImage image = QGuiApplication::primaryScreen()->grabWindow(0).toImage().copy(frame);
    if (image.format() != QImage::Format_RGB32)
        return {};
    const QRgb area = QGuiApplication::palette().color(QPalette::Dark).rgb();
    Sight sight;
    QSize pages;
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x)
            if (line[x] == qRgb(0, 0, 255))
                pages = pages.expandedTo({x, y});
            else if (line[x] == area)
                ++sight.grey;
    }
    sight.margin = image.size() - pages;
    return sight;
}

} // namespace

/// The place, the size and the state of the frame, and the places of the windows in it.
class FramePlacesTest : public Scenario {
    Q_OBJECT
private slots:
    void theFirstPageLeavesTheFrameAlone_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("startBrowser");
        QTest::newRow("maximised, with a page") << 2 << -1;
        QTest::newRow("maximised, empty") << 2 << 0;
        QTest::newRow("moved and above the others") << 0 << 0;
    }

    void theFirstPageLeavesTheFrameAlone()
    {
        QFETCH(const int, state);
        QFETCH(const int, startBrowser);
        const QString wanted =
            state == 2 ? u"_NET_WM_STATE_MAXIMIZED_HORZ"_s : u"_NET_WM_STATE_ABOVE"_s;
        start(state, startBrowser, {800, 640});
        if (state == 0) {
            User::move(title(), {210, 130});
            // "Always on top" in the window manager's menu.
            User::press(u"alt+space Down Down Right Return"_s);
        }
        const auto now = [this] { return property(u"_NET_WM_STATE"_s); };
        QTRY_VERIFY_WITH_TIMEOUT(now().contains(wanted), patience);
        const QString number = property({});
        const QRect place = frame();
        User::press(u"ctrl+n"_s);
        m_caption = title();
        QTest::qWait(500); // the page before is blue, too
        QTRY_COLOUR(place.center() + QPoint(0, place.height() / 3), Qt::blue);
        QTest::qWait(500); // a window that takes the place of another comes a little later
        QCOMPARE(property({}), number);
        QCOMPARE(frame(), place);
        QVERIFY2(now().contains(wanted), qPrintable(now()));
        endAndCompare(state, {800, 640});
    }

    void aSizeBeyondTheScreenIsKept()
    {
        const QSize stored(1900, 1800);
        for (const int width : {stored.width(), 700}) {
            start(0, -1, stored);
            QTest::qWait(500);
            QVERIFY(QGuiApplication::primaryScreen()->geometry().contains(frame()));
            if (width != stored.width())
                User::resize(m_caption, {width, frame().height()});
            QTest::qWait(500);
            endAndCompare(0, {width, stored.height()});
        }
    }

    void tilesFollowTheFrame()
    {
        startWithTwoWindows();
        for (const QPoint& by : {QPoint(160, 120), QPoint(-300, -240), QPoint(240, 160)}) {
            sizeFrame(by);
            QTRY_VERIFY_WITH_TIMEOUT(isFilled(), patience);
        }
        User::press(u"alt+x s"_s); // without the status bar, and with it again
        QTRY_VERIFY_WITH_TIMEOUT(sightOf(frame()).margin.height() < narrow, patience);
        User::press(u"alt+x s"_s);
        QTRY_VERIFY_WITH_TIMEOUT(isFilled(), patience);
        User::press(u"alt+f n"_s);
        QTRY_COLOUR(lowerTitle(), Qt::blue);
        QVERIFY(isFilled());
        User::press(u"alt+f u"_s);
        QTRY_VERIFY_WITH_TIMEOUT(User::colourAt(lowerTitle()) != QColor(Qt::blue), patience);
        QVERIFY(isFilled());
        User::click(lowerTitle(), 2);
        m_caption = maximised(u"Blau"_s);
        QTRY_SEES(m_caption);
        sizeFrame({-100, -50});
        QTest::qWait(500);
        QVERIFY(User::sees(m_caption)); // still fills the frame
        User::click(frame().topRight() + restoreButton);
        m_caption = title();
        QTRY_SEES(m_caption);
        QTRY_VERIFY_WITH_TIMEOUT(isFilled(), patience);
    }

    void theUserAndPagesPlaceWindowsToo()
    {
        m_server->page(u"/blue"_s, "<title>Blau</title><body style='background:#0000ff' onclick='"
                                   "open(\"/blue\", \"\", \"width=1500,height=1200\")'>");
        startWithTwoWindows();
        User::drag(lowerTitle(), lowerTitle() + QPoint(60, -100));
        sizeFrame({120, 80});
        QTest::qWait(500);
        QTRY_VERIFY_WITH_TIMEOUT(sightOf(frame()).margin.width() > m_margin.width() + 40,
                                 patience); // stays where it was put
        User::press(u"ctrl+n"_s);
        QTRY_VERIFY_WITH_TIMEOUT(isFilled(), patience);
        User::click(frame().bottomLeft() + QPoint(150, -60));
        QTRY_VERIFY_WITH_TIMEOUT(sightOf(frame()).margin.width() > m_margin.width() + narrow,
                                 patience); // scroll bars
        User::press(u"alt+f u"_s);
        QTRY_VERIFY_WITH_TIMEOUT(isFilled(), patience);
        for (int i = 0; i < 8; ++i)
            User::press(u"ctrl+n"_s);
        QTRY_VERIFY_WITH_TIMEOUT(isFilled(), patience);
        sizeFrame({-150, -100});
        QTRY_VERIFY_WITH_TIMEOUT(isFilled(), patience);
    }

    void withoutAnArrangementWindowsOpenInside()
    {
        start(0, 0, {800, 640});
        User::press(u"alt+f"_s); // a look into the menu gives it up
        User::click(frame().center());
        for (int i = 0; i < 4; ++i)
            QCOMPARE(m_program->startAndWait({m_server->address(u"/blue"_s)}), 0);
        QTRY_VERIFY_WITH_TIMEOUT(sightOf(frame()).margin.width() < 200, patience);
        QTest::qWait(1500);
        QVERIFY(sightOf(frame()).margin.width() > 60);
        const QColor area = QGuiApplication::palette().color(QPalette::Dark).rgb();
        QCOMPARE(User::colourAt(frame().topRight() + QPoint(-5, 200)), area); // no scroll bar
        QCOMPARE(User::colourAt(frame().bottomLeft() + QPoint(200, -35)), area);
    }

private:
    /// Starts the program, whose start page is blue, in a frame of this size and state.
    void start(int state, int startBrowser, const QSize& size)
    {
        Prefer stored(m_program->file(u"."_s));
        stored.LoadPref();
        stored.HomeUrl(m_server->address(u"/blue"_s));
        stored.MdiState(static_cast<qint16>(state));
        stored.StartBrowser(static_cast<qint16>(startBrowser));
        stored.MdiWidth(toStoredTwips(size.width()));
        stored.MdiHeight(toStoredTwips(size.height()));
        stored.SavePref();
        m_caption = startBrowser != 0 ? maximised(u"Blau"_s) : title();
        m_program->start(*m_run, {});
        QTRY_SEES(m_caption);
        QTest::qWait(700);
    }

    void endAndCompare(int state, const QSize& size)
    {
        User::press(u"ctrl+q"_s);
        QVERIFY(hasEnded());
        Prefer stored(m_program->file(u"."_s));
        stored.LoadPref();
        QCOMPARE(int{stored.MdiState()}, state);
        QCOMPARE(QSize(stored.MdiWidth(), stored.MdiHeight()),
                 QSize(toStoredTwips(size.width()), toStoredTwips(size.height())));
    }

    void startWithTwoWindows()
    {
        start(0, 0, {800, 640});
        User::press(u"ctrl+n ctrl+n"_s);
        QTRY_VERIFY_WITH_TIMEOUT(m_server->requests(u"/blue"_s) == 2, patience);
        // The lower page is there, too: only it reaches down to the status bar.
        QTRY_VERIFY_WITH_TIMEOUT((m_margin = sightOf(frame()).margin).width() < narrow &&
                                     m_margin.height() < low,
                                 patience);
        QTRY_VERIFY_WITH_TIMEOUT(User::colourAt(lowerTitle()) != QColor(Qt::blue), patience);
        QTRY_VERIFY_WITH_TIMEOUT(isFilled(), patience);
    }

    /// Drags the frame's lower right corner.
    void sizeFrame(const QPoint& by)
    {
        const QPoint corner = frame().bottomRight() + QPoint(-4, 3); // in the decoration
        User::drag(corner, corner + by);
    }

    /// No scroll bars, and nothing of the area to be seen but lines between windows.
    bool isFilled() const
    {
        const Sight sight = sightOf(frame());
        return sight.margin == m_margin && sight.grey < 2000;
    }

    QRect frame() const { return User::place(m_caption); }
    /// What the display says of the frame, as "_NET_WM_STATE"; its number where `name` is empty.
    QString property(const QString& name) const
    {
        const QString window = Desk::here().windows(m_caption).value(0);
        if (name.isEmpty())
            return window;
        QProcess process;
        process.start(u"xprop"_s, {u"-id"_s, window, name});
        process.waitForFinished();
        return QString::fromUtf8(process.readAllStandardOutput()).section(u'=', 1).trimmed();
    }

    /// In the title of the lower one of two windows.
    QPoint lowerTitle() const
    {
        const QRect all = frame().adjusted(0, menuHeight, 0, -m_margin.height());
        return all.center() + QPoint(-all.width() / 4, 12);
    }

    QString m_caption;
    QSize m_margin;
};

QTEST_MAIN(FramePlacesTest)
#include "FramePlacesTest.moc"
