#include "app/Arrangement.h"
#include "browser/AddressProposals.h"
#include "browser/BrowserLayout.h"
#include "browser/PageSafety.h"
#include "browser/PageTexts.h"
#include "tests/TestCase.h"

using namespace Qt::StringLiterals;
using Kind = PageSafety::Kind;

class BrowserRulesTest : public TestCase {
    Q_OBJECT
private slots:
    void safety_data()
    {
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("reported");
        QTest::addColumn<int>("kind");
        const auto row = [](const char* name, const QString& shown, const QString& reported,
                            Kind kind) {
            QTest::newRow(name) << shown << reported << static_cast<int>(kind);
        };
        row("nothing", {}, {}, Kind::Unknown);
        row("blank", u"about:blank"_s, u"about:blank"_s, Kind::Unknown);
        row("https", u"https://a.de/x"_s, u"https://a.de:443/#y"_s, Kind::Secured);
        row("on its way", u"https://a.de/"_s, {}, Kind::Unknown);
        row("page before", u"https://a.de/"_s, u"https://b.de/"_s, Kind::Unknown);
        row("other port", u"https://a.de:4433/"_s, u"https://a.de/"_s, Kind::Unknown);
        row("error", u"https://a.de/"_s, u"chrome-error://chromewebdata/"_s, Kind::Unknown);
        row("source", u"view-source:https://a.de/"_s, u"https://a.de/"_s, Kind::Secured);
        row("http", u"http://a.de/"_s, {}, Kind::NotSecured);
        row("source of http", u"view-source:http://a.de/"_s, {}, Kind::NotSecured);
        for (const char* host : {"localhost", "a.localhost", "127.0.0.1", "127.8.0.1", "[::1]"})
            row(host, u"http://%1:80/"_s.arg(QLatin1String(host)), {}, Kind::Local);
        for (const char* host : {"localhost.de", "notlocalhost", "127.0.0.1.de", "128.0.0.1"})
            row(host, u"http://%1/"_s.arg(QLatin1String(host)), {}, Kind::NotSecured);
        row("file", u"file:///etc/hosts"_s, {}, Kind::Local);
        row("file of a server", u"file://server/x"_s, {}, Kind::NotSecured);
        row("own", u"data:text/html,x"_s, u"tessera-error:address=x"_s, Kind::Local);
        row("data", u"data:text/html,x"_s, u"data:text/html,x"_s, Kind::NotSecured);
        row("blob", u"blob:https://a.de/1"_s, u"https://a.de/"_s, Kind::NotSecured);
        row("engine's", u"chrome://gpu/"_s, u"chrome://gpu/"_s, Kind::Unknown);
    }
    void safety()
    {
        QFETCH(const QString, shown);
        QFETCH(const QString, reported);
        QFETCH(const int, kind);
        PageOrigin page{.shown = QUrl(shown), .reported = QUrl(reported)};
        QCOMPARE(static_cast<int>(safetyOf(page)), kind);
        const bool isSecured = kind == static_cast<int>(Kind::Secured);
        page.exception = PageOrigin::Exception::Allowed;
        QCOMPARE(safetyOf(page) == Kind::SecuredByException, isSecured);
        page.exception = PageOrigin::Exception::TakenBack;
        QVERIFY(safetyOf(page) != Kind::Secured && safetyOf(page) != Kind::SecuredByException);
    }

    void quotes()
    {
        QCOMPARE(StripQuotes(u"\"\"a b\"\""_s), u"\"a b\""_s);
        QCOMPARE(StripQuotes(u"\"a"_s), u"\"a"_s);
        QCOMPARE(StripQuotes(u"\""_s), u"\""_s);
    }

    void noLayoutWithoutRoom()
    {
        const BrowserBars both{28, 24, true, true};
        // Too narrow for the address line, or too low for where the engine is now.
        QVERIFY(!layOutBrowser(QSize(60, 300), 60, 0, both));
        QVERIFY(!layOutBrowser(QSize(400, 52), 60, 52, both));
        QVERIFY(layOutBrowser(QSize(61, 53), 60, 52, both));
    }

    void windowSizes()
    {
        const BrowserBars hidden{28, 24, false, false};
        QCOMPARE(windowWidthFor(400, 3600, 200), 600 + 6000 + 600);
        QCOMPARE(windowHeightFor(2000000000, 3600, 200, hidden), 30000001830LL);
    }

    void proposals_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("addresses");
        QTest::newRow("nothing typed") << u" \t"_s << QString();
        QTest::newRow("nowhere") << u"fern"_s << QString();
        QTest::newRow("in titles and addresses, visited ones first")
            << u"see"_s << u"a/see c/ b/"_s;
        QTest::newRow("any letter case") << u"GRÖ"_s << u"a/see"_s;
        QTest::newRow("all words, wherever") << u"berg c/"_s << u"c/"_s;
        QTest::newRow("one word only") << u"berg a/"_s << QString();
        QTest::newRow("not across two texts") << u"größea/"_s << QString();
        QTest::newRow("each once") << u"berg"_s << u"c/ b/"_s;
        QTest::newRow("at most eight") << u"viel"_s << u"0 1 2 3 4 5 6 7"_s;
    }

    void proposals()
    {
        const KnownAddresses visited({{u"a/see"_s, u"Größe"_s}, {u"c/"_s, u"Bergsee"_s}});
        std::vector<KnownAddress> marked{{u"c/"_s, u"Berg"_s}, {u"b/"_s, u"Seeberg"_s}};
        for (int i = 0; i < 10; ++i)
            marked.push_back({QString::number(i), u"viel"_s});
        const KnownAddresses bookmarks(marked);
        QFETCH(const QString, typed);
        QStringList found;
        for (const KnownAddress& one : proposalsFor(typed, {&visited, &bookmarks}))
            found << one.address;
        QTEST(found.join(u' '), "addresses");
    }

    void arrangements_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("count");
        QTest::addColumn<QSize>("area");
        QTest::addColumn<QList<QRect>>("places");
        const auto row = [](const char* name, int mode, QSize area, const QList<QRect>& places) {
            QTest::newRow(name) << mode << int(places.size()) << area << places;
        };
        const QSize wide(800, 301);
        row("none", -1, wide, {});
        row("rows", 1, {400, 601}, {{0, 0, 400, 200}, {0, 200, 400, 200}, {0, 400, 400, 201}});
        row("columns", 2, {801, 99}, {{0, 0, 267, 99}, {267, 0, 267, 99}, {534, 0, 267, 99}});
        row("two rows, however low", 1, wide, {{0, 0, 800, 150}, {0, 150, 800, 151}});
        row("low rows become columns", 1, wide,
            {{0, 0, 266, 150},
             {0, 150, 266, 151},
             {266, 0, 266, 150},
             {266, 150, 266, 151},
             {532, 0, 268, 301}});
        row("narrow columns become rows", 2, {500, 401},
            {{0, 0, 250, 200}, {250, 0, 250, 200}, {0, 200, 500, 201}});
        row("no room for more columns", 1, {250, 301},
            {{0, 0, 250, 100}, {0, 100, 250, 100}, {0, 200, 250, 101}});
        row("rather not to be read than not to be seen", 1, {250, 301},
            {{0, 0, 125, 150}, {0, 150, 125, 151}, {125, 0, 125, 150}, {125, 150, 125, 151}});
        row("beside a scroll bar", 1, {90, 301},
            {{0, 0, 74, 90}, {0, 90, 74, 90}, {0, 180, 74, 90}, {0, 270, 74, 90}});
        row("above a scroll bar", 2, {70, 301}, {{0, 0, 50, 285}, {50, 0, 50, 285}});
        const QSize part(300, 226);
        row("cascade", 0, {400, 301},
            {{{0, 0}, part}, {{30, 30}, part}, {{60, 60}, part}, {{0, 0}, part}});
    }

    void arrangements()
    {
        QFETCH(const int, mode);
        QFETCH(const int, count);
        QFETCH(const QSize, area);
        const auto places =
            arrangedPlaces(area, count, static_cast<Arrangement>(mode), arrangedSizes);
        QTEST(QList<QRect>(places.begin(), places.end()), "places");
    }

private:
    static constexpr ChildSizes arrangedSizes{{50, 90}, {240, 150}, 30, 16};
};

QTEST_APPLESS_MAIN(BrowserRulesTest)
#include "BrowserRulesTest.moc"
