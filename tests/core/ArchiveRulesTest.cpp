#include "SampleArchive.h"
#include "base/DroppedAddress.h"
#include "bookmarks/ArchiveEditor.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/DroppedBookmark.h"
#include "bookmarks/FolderNames.h"
#include "bookmarks/StoredText.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QMimeData>
#include <QRandomGenerator>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {
/// An archive as it is edited, with what can be seen of it.
struct Edited {
    ArchiveFiles files;
    ArchiveTree tree;
    ArchiveEditor editor{files, tree};
    QAbstractItemModelTester tester{&tree};

    explicit Edited(const QString& path) : files(path) { editor.load(); }

    /// What a save would write.
    static QByteArrayList content(Book& book)
    {
        QByteArrayList all;
        if (book.colThema())
            for (const auto& its : *book.colThema()) {
                all << writeThemaRecords({{its->Sequenz(), 0, its->DirName(), its->FileName()}});
                all << (its->colBookmark() ? writeBookmarks(*its->colBookmark()) : QByteArray());
            }
        return all;
    }
    /// The content, which folders would get no file, what the tree shows, and all numbers.
    QByteArrayList state()
    {
        QByteArrayList all = content(files.book());
        for (const auto& folder : *files.book().colThema())
            all << (folder->colBookmark() ? "file" : "none");
        const auto add = [&all](const QModelIndex& node) {
            all << (ArchiveTree::key(node) + node.data().toString()).toUtf8();
        };
        for (int i = 0; i < tree.rowCount(tree.root()); ++i) {
            const QModelIndex folder = tree.index(i, 0, tree.root());
            add(folder);
            for (int j = 0; j < tree.rowCount(folder); ++j)
                add(tree.index(j, 0, folder));
        }
        return all;
    }
    QByteArrayList saved() const
    {
        Book book(files.programFolder());
        book.LoadAllThema();
        book.loadFolders();
        return content(book);
    }

    void changeSomewhere(QRandomGenerator& random)
    {
        const auto below = [&random](int count) { return random.bounded(count); };
        const int folders = tree.rowCount(tree.root());
        const QModelIndex folder =
            folders == 0 ? tree.root() : tree.index(below(folders), 0, tree.root());
        const int its = folders == 0 ? 0 : tree.rowCount(folder);
        const QModelIndex node = its == 0 ? QModelIndex() : tree.index(below(its), 0, folder);
        const QString text = QString::number(random.generate());
        const std::vector<BookmarkTexts> texts{{text, u"u"_s, {}}, {u"a"_s, u"b"_s, u"c"_s}};
        const int kind = folders == 0 ? 0 : below(8);
        if (kind == 0)
            editor.addFolder(below(4) == 0 ? tree.root() : folder, text, {texts[0]});
        else if (kind == 1)
            editor.addFolder(node.isValid() ? node : folder, text);
        else if (kind == 2)
            editor.renameFolder(editor.resolve(folder).folder, text);
        else if (kind == 3)
            editor.removeFolder(folder);
        else if (kind == 4 || !node.isValid())
            editor.addBookmarks(node.isValid() ? node : folder, texts);
        else if (kind == 5)
            editor.changeBookmark(node, editor.resolve(node).bookmark, texts[0]);
        else
            editor.removeBookmark(node);
    }
};
} // namespace

class ArchiveRulesTest : public TestCase {
    Q_OBJECT
private slots:
    void names()
    {
        QCOMPARE(cleanDirName(u"a\r\nb\u2028c\nd"_s), u"a b c d"_s);
        const auto isFree = [](const QString& its) { return its != u"Archiv"; };
        const auto check = [&](const QString& name) {
            return checkDirName(u"Alt"_s, name, isFree);
        };
        QVERIFY(check(u"Alt"_s) == DirNameCheck::Unchanged);
        QVERIFY(check(QString()) == DirNameCheck::Empty);
        QVERIFY(check(u"ARCHIV"_s) == DirNameCheck::Accepted);
    }

    void droppedTexts()
    {
        HistoryCollection history;
        for (const QString& title : {u"first visit"_s, u"second visit"_s}) {
            history.Add(std::make_shared<HistoryItem>());
            history.Item(history.Count())->SetItem(u"http://visited/page"_s, title, {});
        }
        const auto check = [&](const QString& text, const QString& url, const QString& title) {
            const DroppedBookmark asText = droppedBookmark({text, {}}, history);
            QCOMPARE(asText.url + u'|' + asText.title, url + u'|' + title);
            const DroppedBookmark asFile = droppedBookmark({u"text"_s, {text, u"/b"_s}}, history);
            QCOMPARE(asFile.url + u'|' + asFile.title, url + u'|' + title); // the first file wins
        };
        check({}, {}, {});
        check(u"http://h/docs/"_s, u"http://h/docs/"_s, u"docs"_s);
        check(u" http://h/x "_s, u" http://h/x "_s, u"x"_s); // the blanks stay in the address
        check(u"a\\b/c"_s, u"a\\b/c"_s, u"b/c"_s);           // the backslash has the last word
        check(u"http://visited/page"_s, u"http://visited/page"_s, u"first visit"_s);
        check(u"http://visited/PAGE"_s, u"http://visited/PAGE"_s, u"PAGE"_s);
        check(u"file:///C:/Daten/liste.htm"_s, u"C:\\Daten\\liste.htm"_s, u"liste.htm"_s);
        check(u"file:///C:/a file:///b"_s, u"C:\\a b"_s, u"a b"_s);
        check(u"file:///home/u/a%20b.htm"_s, u"/home/u/a b.htm"_s, u"a b.htm"_s);
        check(u"file:///home/u/c%23.htm#top"_s, u"/home/u/c#.htm#top"_s, u"c#.htm#top"_s);
        check(u"file:///home/100%.htm"_s, u"/home/100%.htm"_s, u"100%.htm"_s);
        check(u"file:///home/%E4"_s, u"file:///home/%E4"_s, u"%E4"_s);
    }

    void losses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("losses");
        const auto row = [](const char* name, const QString& text, const QString& losses) {
            QTest::addRow("%s", name) << text << losses;
        };
        row("what the code page has", u"Öl 5 € „?“"_s, {});
        row("as long as the field", u"ä€123678ij"_s, {});
        row("longer", u"ä€1236789ij"_s, u"Wird nach 10 Zeichen abgeschnitten (es sind 11)."_s);
        row("blanks at the end", u"1234567890  "_s, {});
        row("a line break", u"12345\r\n7890"_s,
            u"Wird nach 10 Zeichen abgeschnitten (es sind 11, ein Zeilenumbruch zählt zwei)."_s);
        row("others", u"Жa\u200bЖ\U0001F600"_s, u"Wird zu „?“: Ж U+200B \U0001F600"_s);
        row("pairs count one", QString::fromUcs4(U"\U0001F600").repeated(10),
            u"Wird zu „?“: \U0001F600"_s);
    }
    void losses()
    {
        QFETCH(QString, text);
        QTEST(lossesOf(text, 10), "losses");
    }

    void droppedOffers_data()
    {
        QTest::addColumn<QByteArrayList>("offered"); // list, text, HTML; null: not offered
        QTest::addColumn<QString>("address");        // text, then files
        const auto row = [](const char* name, const QByteArrayList& offered, const char* address) {
            QTest::newRow(name) << offered << QString::fromUtf8(address);
        };
        const QByteArray none;
        row("nothing", {none, none, none}, "- ");
        row("text", {none, "www.a.de/b", none}, "www.a.de/b ");
        row("empty text beside a file", {"file:///a", "", none}, " /a");
        row("file manager", {"file:///d/a%20b\r\nfile:///d/c", "/d/a b\r\n/d/c", none},
            "- /d/a b|/d/c");
        row("file and its address", {"file:///d/a%20b", "file:///d/a%20b", none}, "- /d/a b");
        row("file and a text of its own", {"file:///d/c", "/d/c\nx", none}, "/d/c\nx /d/c");
        row("names that are no text", {"file:///d/%E4\r\nfile:///C:/x", none, none},
            "- file:///d/%E4|file:///C:/x");
        row("link to a file",
            {"file:///d/c", "Datei", "<a class=\"x\" href=\"file:///d/c\">Datei</a>"}, "- /d/c");
        row("link into a file", {"file:///d/c#e", "Datei", "<a href=\"file:///d/c#e\">Datei</a>"},
            "file:///d/c#e ");
        row("addresses", {"#comment\r\nhttp://h/1\r\nhttp://h/2", "http://h/1\nhttp://h/2", none},
            "http://h/1 ");
        row("address and file", {"http://h/1\r\nfile:///d/c", none, none}, "- /d/c");
        row("image",
            {"file:///tmp/x/b.png", "Alt", "<img alt=\" src=\" src=\"http://h/b?a&amp;c\">"},
            "http://h/b?a&c ");
        row("local image", {"file:///tmp/x/b.png", "", "<meta x><img src=\"file:///d/b.png\">"},
            "- /d/b.png");
        row("image by its sizes",
            {"file:///tmp/x/b", none, "<img srcset=\"http://h/b 1x, http://h/c\">"}, "http://h/b ");
        row("image of no address", {"file:///tmp/x/b", "Alt", "<img alt=\"Alt\">"}, "- ");
        row("selection", {none, "a b", "<b>a <a href=\"http://h/\">b</a></b>"}, "a b ");
    }
    void droppedOffers()
    {
        QFETCH(QByteArrayList, offered);
        QMimeData data;
        for (const auto& [format, bytes] : {std::pair{u"text/uri-list"_s, offered[0]},
                                            {u"text/plain"_s, offered[1]},
                                            {u"text/html"_s, offered[2]}})
            if (!bytes.isNull())
                data.setData(format, bytes);
        const DroppedAddress dropped = droppedAddress(data);
        QTEST(dropped.text.value_or(u"-"_s) + u' ' + dropped.files.join(u'|'), "address");
    }

    /// Of the archive that the first load makes the tree shows nothing.
    void theFirstFolderIsTakenBack()
    {
        Edited e(path());
        const QByteArrayList before = e.state();
        QVERIFY(before.size() > 2 && !e.tree.hasChildren(e.tree.root()));
        e.editor.addFolder(e.tree.root(), u"Neu"_s);
        QVERIFY(e.state() != before && e.tree.hasChildren(e.tree.root()));
        QVERIFY(e.editor.steps().takeBack());
        QCOMPARE(e.state(), before);
        QVERIFY(!e.files.isChanged());
    }

    void stepsGoBackAndForth_data()
    {
        QTest::addColumn<int>("seed");
        QTest::addColumn<bool>("inFolder"); // where deleting a folder deletes its file
        for (int seed = 0; seed < 16; ++seed)
            QTest::addRow("%d", seed) << seed << (seed % 2 == 0);
    }
    void stepsGoBackAndForth()
    {
        QFETCH(int, seed);
        QFETCH(bool, inFolder);
        const QString before = QDir::currentPath();
        const auto back = qScopeGuard([&before] { QDir::setCurrent(before); });
        if (inFolder)
            QDir::setCurrent(path());
        {
            Book book(path());
            fillSample(book, path());
            book.SaveAllThema();
        }
        Edited e(path());
        ArchiveSteps& steps = e.editor.steps();
        QRandomGenerator random(static_cast<quint32>(seed));
        QList<QByteArrayList> states{e.state()};
        const QByteArrayList first = e.saved();
        qsizetype now = 0;
        const auto check = [&] {
            QCOMPARE(e.state(), states[now]);
            if (!e.files.isChanged())
                QCOMPARE(e.saved(), Edited::content(e.files.book()));
        };
        const auto goBack = [&] {
            const bool moved = steps.takeBack().has_value();
            QCOMPARE(moved, now > 0);
            now -= moved ? 1 : 0;
            check();
        };
        const auto goForth = [&] {
            const bool moved = steps.repeat().has_value();
            QCOMPARE(moved, now + 1 < states.size());
            now += moved ? 1 : 0;
            check();
        };
        for (int i = 0; i < 60; ++i) {
            switch (random.bounded(8)) {
            case 0:
                QCOMPARE(e.editor.save(), QString());
                QVERIFY(!e.files.isChanged());
                break;
            case 1:
                goForth();
                break;
            case 2:
            case 3:
                goBack();
                break;
            default:
                const OneStep step(steps, u"Import"_s);
                for (int left = random.bounded(1, 3); left > 0; --left)
                    e.changeSomewhere(random);
                states.resize(++now);
                states << e.state();
            }
            check();
        }
        while (now > 0)
            goBack();
        goBack();
        QCOMPARE(e.editor.save(), QString());
        QCOMPARE(e.saved(), first);
        while (now + 1 < states.size())
            goForth();
        QCOMPARE(e.editor.save(), QString());
        QCOMPARE(e.saved(), Edited::content(e.files.book()));
        e.editor.load();
        QVERIFY(!steps.takeBack() && !steps.repeat());
    }
};

QTEST_GUILESS_MAIN(ArchiveRulesTest)
#include "ArchiveRulesTest.moc"
