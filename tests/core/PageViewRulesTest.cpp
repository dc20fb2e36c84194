#include "pages/downloads/FileNames.h"
#include "pages/viewing/PageMenuItems.h"
#include "pages/viewing/SpellDictionaries.h"
#include "pages/viewing/ZoomSteps.h"
#include "tests/TestCase.h"

using namespace Qt::StringLiterals;
using enum PageMenuItem;

/// The rules behind what can be done with a page.
class PageViewRulesTest : public TestCase {
    Q_OBJECT
private slots:
    void zoom()
    {
        QCOMPARE(zoomedBy(100, -1), 90);
        QCOMPARE(zoomedBy(400, 5), 500); // there and no further
        QCOMPARE(zoomedBy(120, 1), 125); // beside the steps
        QCOMPARE(zoomedBy(120, -1), 110);
    }

    void menu()
    {
        using Items = QList<PageMenuItem>;
        using Media = PageMenuTarget::Media;
        const Items link{OpenLink, OpenLinkInWindow, CopyLinkAddress, SaveLink};
        const Items image{OpenImageInWindow, SaveImage, CopyImage, CopyImageAddress};
        const auto items = [](const PageMenuTarget& target) {
            return offeredItems(pageMenuItems(target), [](PageMenuItem) { return true; });
        };
        PageMenuTarget target{.isLink = true};
        QCOMPARE(items(target), (Items{CopyLinkAddress})); // a local file, for a foreign page
        target.isLinkOpenable = true;
        QCOMPARE(items(target), (Items{OpenLink, CopyLinkAddress})); // a script
        target.isLinkForWindow = true;
        QCOMPARE(items(target), link);
        target.hasSelection = true;
        QCOMPARE(items(target), (link + Items{Separator, Copy, SelectAll}));
        target.hasSelection = false;
        target.media = Media::Image;
        target.isImageForWindow = true;
        target.isMediaSavable = true;
        QCOMPARE(items(target), link + Items{Separator} + image);
        QCOMPARE(items({.media = Media::Image}), image.mid(2)); // of the page's own making
        QCOMPARE((items({.hasSelection = true, .isEditable = true})),
                 (Items{Undo, Redo, Separator, Cut, Copy, Paste, Separator, SelectAll}));
    }

    void spelling()
    {
        const QStringList german{u"de_AT"_s, u"de_BE"_s, u"de_DE"_s};
        QCOMPARE(spellLanguages({}, {u"de-DE"_s}), QStringList());
        QCOMPARE(spellLanguages(german, {u"C"_s}), QStringList{u"de_DE"_s}); // home country
        QCOMPARE((spellLanguages(german, {u"de-AT"_s, u"de"_s})), QStringList{u"de_AT"_s});
        QCOMPARE(spellLanguages({u"en-GB"_s}, {u"en-US"_s}), QStringList{u"en-GB"_s});
        QCOMPARE((spellLanguages(german + QStringList{u"en-US"_s, u"fr-FR"_s, u"it_IT"_s},
                                 {u"fr-CH"_s})), // one of each, the own one first
                 (QStringList{u"fr-FR"_s, u"de_DE"_s, u"en-US"_s}));
    }

    void pdfName()
    {
        QCOMPARE(pdfFileName(u"Größe (1)"_s), u"Größe (1).pdf"_s);
        QCOMPARE(pdfFileName(u"../a\\b:\n\"c\" \u202e"_s), u"a b_ _c_.pdf"_s);
        QCOMPARE(pdfFileName(u"-.-x"_s), u"x.pdf"_s); // hidden, or an option
        QCOMPARE(pdfFileName(u" / "_s), u"Seite.pdf"_s);
        QCOMPARE(pdfFileName(QString(59, u'a') + u"\U0001F600"_s), QString(59, u'a') + u".pdf"_s);
    }
};

QTEST_GUILESS_MAIN(PageViewRulesTest)
#include "PageViewRulesTest.moc"
