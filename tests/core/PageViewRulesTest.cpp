#include "browser/services/PageMenuRules.h"
#include "browser/services/PdfFileName.h"
#include "browser/services/SpellLanguages.h"
#include "browser/services/ZoomSteps.h"

#include <QtTest>

using namespace Qt::StringLiterals;
using enum PageMenuItem;

/// The rules behind what can be done with a page.
class PageViewRulesTest : public QObject {
    Q_OBJECT
private slots:
    void zoom_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("turns");
        QTest::addColumn<int>("to");
        QTest::newRow("in") << 100 << 1 << 110;
        QTest::newRow("out") << 100 << -1 << 90;
        QTest::newRow("there and no further") << 400 << 5 << 500;
        QTest::newRow("back to the smallest") << 33 << -5 << 25;
        QTest::newRow("beside the steps, in") << 120 << 1 << 125;
        QTest::newRow("beside the steps, out") << 120 << -1 << 110;
        QTest::newRow("above all") << 900 << -1 << 500;
    }
    void zoom()
    {
        QFETCH(int, from);
        QFETCH(int, turns);
        QTEST(zoomedBy(from, turns), "to");
    }

    void menu_data()
    {
        QTest::addColumn<PageMenuTarget>("target");
        QTest::addColumn<QList<PageMenuItem>>("items");
        using Media = PageMenuTarget::Media;
        const QList<PageMenuItem> link{OpenLink, OpenLinkInWindow, CopyLinkAddress, SaveLink};
        const QList<PageMenuItem> image{OpenImageInWindow, SaveImage, CopyImage, CopyImageAddress};
        const QList<PageMenuItem> between{Separator};
        QTest::newRow("link") << PageMenuTarget{.isLink = true, .isLinkForWindow = true} << link;
        QTest::newRow("script") << PageMenuTarget{.isLink = true}
                                << QList{OpenLink, CopyLinkAddress};
        QTest::newRow("image in a link") << PageMenuTarget{.isLink = true,
                                                           .isLinkForWindow = true,
                                                           .media = Media::Image,
                                                           .isImageForWindow = true}
                                         << link + between + image;
        QTest::newRow("image of the page's own making")
            << PageMenuTarget{.media = Media::Image} << image.mid(1);
        QTest::newRow("selected link")
            << PageMenuTarget{.isLink = true, .isLinkForWindow = true, .hasSelection = true}
            << link + between + QList{Copy, SelectAll};
        QTest::newRow("selected in a field")
            << PageMenuTarget{.hasSelection = true, .isEditable = true}
            << QList{Undo, Redo, Separator, Cut, Copy, Paste, Separator, SelectAll};
    }
    void menu()
    {
        QFETCH(PageMenuTarget, target);
        const auto any = [](PageMenuItem) { return true; };
        QTEST(offeredItems(pageMenuItems(target), any), "items");
    }

    void onlyWhatIsOffered()
    {
        const auto isFew = [](PageMenuItem item) {
            return item == Reload || item == Find || item == BrowserData;
        };
        QCOMPARE(offeredItems(pageMenuItems({}), isFew),
                 (QList{Reload, Separator, Find, Separator, BrowserData}));
    }

    void spelling_data()
    {
        QTest::addColumn<QStringList>("installed");
        QTest::addColumn<QStringList>("user");
        QTest::addColumn<QStringList>("chosen");
        const QStringList german{u"de_AT"_s, u"de_BE"_s, u"de_DE"_s};
        QTest::newRow("none") << QStringList() << QStringList{u"de-DE"_s} << QStringList();
        QTest::newRow("home country") << german << QStringList{u"C"_s} << QStringList{u"de_DE"_s};
        QTest::newRow("own country")
            << german << QStringList{u"de-AT"_s, u"de"_s} << QStringList{u"de_AT"_s};
        QTest::newRow("another country's")
            << QStringList{u"en-GB"_s} << QStringList{u"en-US"_s} << QStringList{u"en-GB"_s};
        QTest::newRow("one of each, own first")
            << german + QStringList{u"en-US"_s, u"fr-FR"_s, u"it_IT"_s} << QStringList{u"fr-CH"_s}
            << QStringList{u"fr-FR"_s, u"de_DE"_s, u"en-US"_s};
    }
    void spelling()
    {
        QFETCH(QStringList, installed);
        QFETCH(QStringList, user);
        QTEST(spellLanguages(installed, user), "chosen");
    }

    void pdfName_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("name");
        QTest::newRow("kept") << u"Größe (1)"_s << u"Größe (1).pdf"_s;
        QTest::newRow("unsafe") << u"../a\\b:\n\"c\" \u202e"_s << u"a b c.pdf"_s;
        QTest::newRow("hidden, or an option") << u"-.-x"_s << u"x.pdf"_s;
        QTest::newRow("nothing left") << u" / "_s << u"Seite.pdf"_s;
        QTest::newRow("cut, not through a character")
            << QString(59, u'a') + u"\U0001F600"_s << QString(59, u'a') + u".pdf"_s;
    }
    void pdfName()
    {
        QFETCH(QString, title);
        QTEST(pdfFileName(title), "name");
    }
};

QTEST_GUILESS_MAIN(PageViewRulesTest)
#include "PageViewRulesTest.moc"
