#include "app/Arrangement.h"
#include "browser/BrowserLayout.h"
#include "browser/PageTexts.h"
#include "tests/TestCase.h"

using namespace Qt::StringLiterals;

class BrowserRulesTest : public TestCase {
    Q_OBJECT
private slots:
    void quotes()
    {
        QCOMPARE(StripQuotes(u"\"\"a b\"\""_s), u"\"a b\""_s);
        QCOMPARE(StripQuotes(u"\"a"_s), u"\"a"_s);
        QCOMPARE(StripQuotes(u"\""_s), u"\""_s);
    }

    void layout()
    {
        const BrowserBars both{28, 24, true, true};
        const auto placed = layOutBrowser(QSize(400, 300), 60, 0, both);
        QVERIFY(placed);
        QCOMPARE(placed->addressWidth, 340);
        QCOMPARE(placed->engine, QRect(0, 52, 400, 248));
        const BrowserBars addressOnly{28, 24, false, true};
        QCOMPARE(layOutBrowser(QSize(400, 300), 60, 52, addressOnly)->engine,
                 QRect(0, 24, 400, 276));
        QCOMPARE(placeBars(400, both).address.top(), 28);
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

    void arrangements()
    {
        using Places = std::vector<QRect>;
        const auto places = [](int mode, int count) {
            const auto all = arrangedPlaces(QSize(400, 301), count, static_cast<Arrangement>(mode),
                                            30, {50, 90});
            return Places(all.begin(), all.end());
        };
        QCOMPARE(places(1, 3), (Places{{0, 0, 400, 100}, {0, 100, 400, 100}, {0, 200, 400, 101}}));
        QCOMPARE(places(2, 3), (Places{{0, 0, 133, 301}, {133, 0, 133, 301}, {266, 0, 134, 301}}));
        const QSize part(300, 226);
        QCOMPARE(places(0, 4),
                 (Places{{{0, 0}, part}, {{30, 30}, part}, {{60, 60}, part}, {{0, 0}, part}}));
        QCOMPARE(places(1, 4).back(), QRect(0, 270, 400, 90)); // more than fit
    }
};

QTEST_APPLESS_MAIN(BrowserRulesTest)
#include "BrowserRulesTest.moc"
