#include "base/ShownText.h"
#include "browser/PageTexts.h"
#include "pages/asking/CertificateExceptions.h"
#include "pages/asking/PageLimits.h"
#include "pages/asking/PermissionMemory.h"
#include "pages/asking/SiteText.h"
#include "pages/asking/UrlSchemes.h"
#include "pages/downloads/FileNames.h"
#include "pages/viewing/EndProcess.h"
#include "pages/viewing/PageMenuItems.h"
#include "pages/viewing/SiteZooms.h"
#include "pages/viewing/SpellDictionaries.h"
#include "pages/viewing/ZoomSteps.h"
#include "tests/TestCase.h"

#include <QProcess>

#include <ctime>
#include <unistd.h>

using namespace Qt::StringLiterals;

/// The rules about what pages may say, ask and open, and what can be done with them.
class PageRulesTest : public TestCase {
    Q_OBJECT
private slots:
    void texts()
    {
        QCOMPARE(cleanText(u"a\tb\u202E\u0007c\r\n\n\n \nd\u2028e\n"_s), u"a bc\n\nd\ne"_s);
        QCOMPARE(cleanText(QString(9000, u'x')).size(), 1501);
        QCOMPARE(cleanText(u"x\n"_s.repeated(500)).count(u'\n'), 20);
        QCOMPARE(cleanLine(u" a\nb "_s), u"a b"_s);
        const QString hidden = QString::fromUcs4(U"\U000E0041\U000E0100\U0001D173\u200F\u2066");
        QCOMPARE(cleanText(hidden + u"a😀"_s), u"a😀"_s);
        QCOMPARE(messageText(hidden + u"a\x1b[2J\nb"_s), u"a[2J\nb"_s);
        QCOMPARE(windowCaption(hidden + u"a😀\n[*]"_s), u"a😀 [*][*]"_s); // list and rows alike
        QCOMPARE(cleanLine(u"ab😀"_s, 3), u"ab…"_s);                     // no half character
    }

    // Each takes a hundredth of a second at most; what looks at a text over and over again
    // takes minutes.
    void longTextsAreCutFirst()
    {
        using Rule = QString (*)(const QString&);
        const QList<std::pair<const char*, Rule>> rules{
            {"name", safeFileName},
            {"free name",
             [](const QString& text) {
                 return freeFileName(safeFileName(text),
                                     [](const auto& name) { return !name.contains(u"(9)"_s); });
             }},
            {"document", pdfFileName},
            {"text", cleanText},
            {"line", [](const QString& text) { return cleanLine(text); }},
            {"site", [](const QString& text) { return siteName(QUrl(u"http://"_s + text)); }},
            {"scheme", [](const QString& text) {
                 return QString::number(isForDesktop(QUrl(text + u":x"_s)));
             }}};
        for (const QString& part : {u"a"_s, u"."_s, u" "_s, u"\n"_s, u"a."_s, u"\u202E"_s, u"😀"_s,
                                    u"/"_s, u".tar"_s, u"."_s.repeated(1000) + u'a'}) {
            const QString text = u'x' + part.repeated(2'000'000 / part.size()) + u'x';
            for (const auto& [name, rule] : rules) {
                const std::clock_t before = std::clock(); // of this process alone
                QVERIFY2(rule(text).size() <= 1501, name);
                QVERIFY2(std::clock() - before < 3 * CLOCKS_PER_SEC, name);
            }
        }
    }

    void sites()
    {
        const auto name = [](const QString& url) { return siteName(QUrl(url)); };
        QCOMPARE(name(u"https://user:pw@www.example.org/path?x"_s), u"https://www.example.org"_s);
        QCOMPARE(name(u"http://[::1]:81/"_s), u"http://[::1]:81"_s);
        QCOMPARE(name(u"http://аpple.com/"_s), u"http://xn--pple-43d.com"_s); // a Cyrillic letter
        QCOMPARE(name(u"http://www.bank.de."_s + u"a."_s.repeated(80) + u"evil.org/"_s),
                 u"http://…"_s + u"a."_s.repeated(26) + u"evil.org"_s);
        QCOMPARE(name(u"file:///etc/passwd"_s), u"Eine Datei auf diesem Rechner"_s);
        QCOMPARE(name(u"data:text/html,x"_s), u"Diese Seite"_s);
    }

    void desktopSchemes()
    {
        for (const QString& url : {u"mailto:a@b"_s, u"tel:1"_s, u"magnet:?x"_s, u"own-app:x"_s})
            QVERIFY2(isForDesktop(QUrl(url)), qPrintable(url));
        for (const QString& url : {u"http://h"_s, u"FILE:///x"_s, u"JavaScript:1"_s, u"data:,x"_s,
                                   u"c:x"_s, u"view-source:http://h"_s, u"rel/ative"_s, QString()})
            QVERIFY2(!isForDesktop(QUrl(url)), qPrintable(url));
        // The engine would hand them over by itself.
        for (const QString& url : {u"ftp://h"_s, u"jar:file:///x"_s, u"VBScript:x"_s, u"c:x"_s,
                                   u"qrc:/x"_s, u"tessera-error:x"_s})
            QVERIFY2(isForNobody(QUrl(url)), qPrintable(url));
        for (const QString& url : {u"rel/ative"_s, u"about:blank"_s, QString()})
            QVERIFY2(!isForNobody(QUrl(url)), qPrintable(url));
    }

    void whatPagesOpen()
    {
        const QUrl web(u"http://h/"_s);
        const QUrl local(u"file:///tmp/x.html"_s);
        for (const QString& url : {u"https://i"_s, u"javascript:1"_s, u"mailto:a@b"_s})
            QVERIFY2(canPageOpen(QUrl(url), web), qPrintable(url));
        for (const QString& url : {u"file:///x"_s, u"chrome://gpu"_s, u"view-source:http://h"_s,
                                   u"devtools://x"_s, u"qrc:/x"_s, u"data:,x"_s, QString()})
            QVERIFY2(!canPageOpen(QUrl(url), web), qPrintable(url));
        QVERIFY(canPageOpen(QUrl(u"file:///x"_s), local));
    }

    void permissions()
    {
        using enum PermissionKind;
        PermissionMemory memory;
        const QUrl site(u"https://h/a"_s);
        QVERIFY(!memory.answer(site, Camera));
        memory.remember(site, Camera, true);
        QCOMPARE(memory.answer(QUrl(u"https://h/b?c"_s), Camera), true);
        for (const QString& other : {u"http://h/a"_s, u"https://h:444/a"_s, u"https://i/a"_s})
            QVERIFY(!memory.answer(QUrl(other), Camera));
        QVERIFY(!memory.answer(site, CameraAndMicrophone));
        memory.remember(site, Microphone, false);
        QCOMPARE(memory.answer(site, CameraAndMicrophone), false);
        memory.clear();
        memory.remember(site, CameraAndMicrophone, true);
        QCOMPARE(memory.answer(site, Microphone), true);
    }

    void answersAreTakenBack()
    {
        using enum PermissionKind;
        PermissionMemory memory;
        const QUrl site(u"https://a.de/x"_s);
        memory.remember(site, CameraAndMicrophone, true);
        memory.remember(site, Location, false);
        const auto shown = [&] {
            QStringList texts;
            for (const auto& [kind, isGranted] : memory.answers(QUrl(u"https://a.de/y"_s)))
                texts << permissionAnswer(kind, isGranted).section(u' ', 0, 2);
            return texts.join(u'|');
        };
        QCOMPARE(shown(), u"Erlaubt: die Kamera|Erlaubt: das Mikrofon|Abgelehnt: Ihren Standort"_s);
        memory.forget(site, Camera);
        QCOMPARE(memory.answer(site, CameraAndMicrophone), std::nullopt);
        QCOMPARE(shown(), u"Erlaubt: das Mikrofon|Abgelehnt: Ihren Standort"_s);

        CertificateExceptions certificates;
        certificates.allow({.host = u"a"_s, .digest = "1"});
        certificates.allow({.host = u"a"_s, .digest = "2"});
        certificates.takeBack(u"a"_s);
        certificates.takeBack(u"b"_s);
        QVERIFY(!certificates.isAllowed(u"a"_s, "1") && !certificates.isAllowed(u"a"_s, "2"));
        QCOMPARE(certificates.takenBack(u"a"_s)->digest, "2"_ba);
        QVERIFY(!certificates.takenBack(u"b"_s));
        certificates.allow(*certificates.takenBack(u"a"_s));
        QVERIFY(certificates.isAllowed(u"a"_s, "2") && !certificates.hasTakenBack());
    }

    void silence()
    {
        const QUrl page(u"http://h/a"_s);
        const QUrl other(u"http://i/b"_s);
        DialogLimit limit;
        const auto isSilent = [&](const QUrl& frame, const QUrl& shown) {
            limit.dialogStarting(frame, shown);
            return limit.isSilenced();
        };
        limit.navigationStarting(page);
        limit.silence();
        for (const QUrl& target : {QUrl(u"blob:http://h/x"_s), QUrl(u"about:blank"_s)}) {
            limit.navigationStarting(target);
            QVERIFY(isSilent(page, target));
        }
        limit.navigationStarting(other); // and stays, or only begins to step back to it
        QVERIFY(isSilent(page, page) && isSilent(other, page) && isSilent(page, other));
        QVERIFY(!isSilent(other, other));
    }

    void zoom()
    {
        QCOMPARE(zoomedBy(100, -1), 90);
        QCOMPARE(zoomedBy(400, 5), 500); // there and no further
        QCOMPARE(zoomedBy(120, 1), 125); // beside the steps
        QCOMPARE(zoomedBy(120, -1), 110);
        for (const auto& [address, site] : {std::pair{u"http://Host:80/a"_s, u"host"_s},
                                            {u"https://host:8443/b?c#d"_s, u"host"_s},
                                            {u"view-source:https://host/a"_s, u"host"_s},
                                            {u"blob:https://host/1-2"_s, u"host"_s},
                                            {u"file:///a/b.html"_s, u"file:"_s},
                                            {u"file://server/c.html"_s, u"file:"_s},
                                            {u"about:blank"_s, u"about:"_s},
                                            {u"view-source:view-source:"_s, u":"_s}})
            QCOMPARE(SiteZooms::siteOf(QUrl(address)), site);
    }

    void menu()
    {
        using enum PageMenuItem;
        using Items = QList<PageMenuItem>;
        using Media = PageMenuTarget::Media;
        const Items link{OpenLink,        OpenLinkInWindow, OpenLinkPrivately,
                         CopyLinkAddress, SaveLink,         LinkToArchive};
        const Items image{OpenImageInWindow, SaveImage, CopyImage, CopyImageAddress};
        const auto items = [](const PageMenuTarget& target) {
            return offeredItems(pageMenuItems(target), [](PageMenuItem) { return true; });
        };
        PageMenuTarget target{.isLink = true, .isLinkOpenable = true};
        QCOMPARE(items(target), (Items{OpenLink, CopyLinkAddress})); // a script
        target.isLinkForWindow = true;
        QCOMPARE(items(target), link);
        target.hasSelection = true;
        QCOMPARE(items(target), (link + Items{Separator, Copy, SelectAll, Separator, SearchText}));
        target.hasSelection = false;
        target.media = Media::Image;
        target.isImageForWindow = true;
        target.isMediaSavable = true;
        QCOMPARE(items(target), link + Items{Separator} + image);
        QCOMPARE(items({.media = Media::Image}), image.mid(2)); // of the page's own making
        QCOMPARE((items({.hasSelection = true, .isEditable = true})),
                 (Items{Undo, Redo, Separator, Cut, Copy, Paste, Separator, SelectAll}));
        QVERIFY(items({.isPageHeard = true}).contains(SoundOff));
        QCOMPARE(items({.isPageHeard = true, .hasSelection = true}).last(), SoundOff);
        QVERIFY(!items({.media = Media::Player, .isPageHeard = true}).contains(SoundOff));
        QCOMPARE(items({.media = Media::Player, .isPageSilenced = true}).last(), SoundOn);
    }

    void endsOnlyDescendants()
    {
        QVERIFY(!endDescendant(0));
        QVERIFY(!endDescendant(::getpid()));
        QVERIFY(!endDescendant(::getppid()));
        QProcess child;
        child.start(u"sh"_s, {u"-c"_s, u"sleep 60 & echo $!; wait"_s});
        QVERIFY(child.waitForReadyRead());
        QVERIFY(endDescendant(child.readLine().trimmed().toLongLong()));
        QVERIFY(child.waitForFinished());
        QCOMPARE(child.exitStatus(), QProcess::NormalExit);
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
};

QTEST_GUILESS_MAIN(PageRulesTest)
#include "PageRulesTest.moc"
