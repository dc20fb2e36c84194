#include "SampleArchive.h"
#include "bookmarks/ArchiveFiles.h"
#include "bookmarks/ArchiveMenuStates.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/FolderNames.h"
#include "bookmarks/NodeKeys.h"

#include <QAbstractItemModelTester>
#include <QSet>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using Selection = ArchiveSelection;

Q_DECLARE_METATYPE(ArchiveSelection)

class ArchiveRulesTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void menus_data()
    {
        QTest::addColumn<ArchiveSelection>("selection");
        QTest::addColumn<QString>("on");
        QTest::addColumn<QString>("off");
        const QString bookmarks =
            u"mn_OpenAllBkm mn_OpenBkm mn_Hinzufügen mn_Loeschen mn_Eigenschaften"_s;
        QTest::newRow("empty tree") << Selection::EmptyTree << QString()
                                    << u"mn_AddOrdner mn_DelOrdner mn_AttrOrdner mn_Hinzufügen "
                                       "mn_Loeschen mn_Eigenschaften"_s;
        QTest::newRow("nothing") << Selection::Nothing << QString()
                                 << u"mn_DelOrdner mn_AttrOrdner mn_Hinzufügen mn_Loeschen "
                                    "mn_Eigenschaften"_s;
        QTest::newRow("root") << Selection::Root << u"mn_AddOrdner"_s
                              << u"mn_DelOrdner mn_AttrOrdner mn_exportdetail "_s + bookmarks;
        QTest::newRow("empty folder")
            << Selection::EmptyFolder
            << u"mn_AddOrdner mn_DelOrdner mn_AttrOrdner mn_OpenAllBkm mn_Hinzufügen"_s
            << u"mn_exportdetail mn_OpenBkm mn_Loeschen mn_Eigenschaften"_s;
        QTest::newRow("folder") << Selection::Folder
                                << u"mn_AddOrdner mn_DelOrdner mn_AttrOrdner mn_exportdetail "
                                   "mn_OpenAllBkm mn_Hinzufügen"_s
                                << u"mn_OpenBkm mn_Loeschen mn_Eigenschaften"_s;
        QTest::newRow("bookmark")
            << Selection::Bookmark << u"mn_OpenBkm mn_Hinzufügen mn_Loeschen mn_Eigenschaften"_s
            << u"mn_AddOrdner mn_DelOrdner mn_AttrOrdner mn_exportdetail mn_OpenAllBkm"_s;
    }
    void menus()
    {
        QFETCH(ArchiveSelection, selection);
        QFETCH(QString, on);
        QFETCH(QString, off);
        QStringList isOn;
        QStringList isOff;
        for (const auto& states : {folderMenuStates(selection), bookmarkMenuStates(selection)})
            for (const MenuState& state : states)
                (state.enabled ? isOn : isOff).append(state.item.toString());
        QCOMPARE(isOn.join(u' '), on);
        QCOMPARE(isOff.join(u' '), off);
    }

    void newNames()
    {
        QSet<QString> taken;
        const auto isFree = [&taken](const QString& name) { return !taken.contains(name); };
        QCOMPARE(newDirName(isFree), u"Neuer Ordner"_s);
        taken = {u"Neuer Ordner"_s, u"Neuer Ordner (2)"_s, u"neuer ordner (1)"_s};
        QCOMPARE(newDirName(isFree), u"Neuer Ordner (1)"_s);
        QVERIFY_THROWS_EXCEPTION(OverflowError, newDirName([](const QString&) { return false; }));
    }

    void typedNames_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("clean");
        QTest::addColumn<int>("check");
        const auto row = [](const char* title, const QString& typed, const QString& clean,
                            DirNameCheck check) {
            QTest::newRow(title) << typed << clean << static_cast<int>(check);
        };
        row("itself", u"Alt"_s, u"Alt"_s, DirNameCheck::Unchanged);
        row("itself with blanks", u"  Alt "_s, u"Alt"_s, DirNameCheck::Unchanged);
        row("empty", {}, {}, DirNameCheck::Empty);
        row("blank", u"   "_s, {}, DirNameCheck::Empty);
        row("only line breaks", u"\r\n\n"_s, {}, DirNameCheck::Empty);
        row("taken", u" Archiv"_s, u"Archiv"_s, DirNameCheck::Taken);
        row("other case", u"ARCHIV"_s, u"ARCHIV"_s, DirNameCheck::Accepted);
        row("line breaks", u"a\r\nb\u2028c\nd"_s, u"a b c d"_s, DirNameCheck::Accepted);
        row("300 characters", QString(300, u'x'), QString(300, u'x'), DirNameCheck::Accepted);
    }
    void typedNames()
    {
        QFETCH(QString, typed);
        QFETCH(QString, clean);
        QFETCH(int, check);
        QCOMPARE(cleanDirName(typed), clean);
        const auto isFree = [](const QString& name) { return name != u"Archiv"; };
        QCOMPARE(static_cast<int>(checkDirName(u"Alt"_s, clean, isFree)), check);
    }

    void keysAndPlaces()
    {
        const auto split = [](const QString& key) {
            qint16 left = -7;
            qint16 right = -7;
            splitNodeKey(key, left, right);
            return QPoint(left, right);
        };
        QCOMPARE(split(rootNodeKey()), QPoint(0, -7));
        QCOMPARE(split(folderNodeKey(7)), QPoint(7, -7));
        QCOMPARE(split(bookmarkNodeKey(7, 12)), QPoint(7, 12));
        QVERIFY_THROWS_EXCEPTION(OverflowError, split(folderNodeKey(32768)));
        QVERIFY_THROWS_EXCEPTION(ConversionError, split(u"x"_s));

        Book book({});
        fillSample(book, {});
        qint16 position = -1;
        GetDirIdx(*book.colThema(), 9, position);
        QCOMPARE(position, qint16{3});
        GetBookmarkIdx(*book.colThema()->Item(1)->colBookmark(), 5, position);
        QCOMPARE(position, qint16{2});
        GetDirIdx(*book.colThema(), 4, position);
        QCOMPARE(position, qint16{0});
    }

    void treeSize()
    {
        QCOMPARE(archiveTreeSize({3000, 3000}, {15, 30}, 300), QSize(2985, 2670));
        QCOMPARE(archiveTreeSize({15, 330}, {15, 30}, 300), QSize(0, 0));
        QVERIFY(!archiveTreeSize({3000, 329}, {15, 30}, 300));
        QVERIFY(!archiveTreeSize({14, 3000}, {15, 30}, 300));
    }

    void tree()
    {
        Book book({});
        fillSample(book, {});
        ArchiveTree tree;
        const QAbstractItemModelTester tester(&tree);
        QCOMPARE(tree.rowCount(tree.root()), 0);
        tree.build(book.colThema().get());
        QCOMPARE(shown(tree), u"0@ 3@ 3@2 3@5 3@9 6@ 9@ 12@ 12@5"_s);

        auto folder = std::make_shared<Thema>(QString());
        folder->Nr(13);
        const QModelIndex node = tree.insertFolder(1, folder);
        tree.insertBookmark(node, 0, makeBookmark(1, u"b"_s, {}, {}));
        tree.insertBookmark(node, 0, makeBookmark(2, u"a"_s, {}, {}));
        tree.insertBookmark(node, 1, makeBookmark(3, u"Archiv"_s, {}, {}));
        QCOMPARE(shown(tree), u"0@ 3@ 3@2 3@5 3@9 13@ 13@2 13@3 13@1 6@ 9@ 12@ 12@5"_s);
        QVERIFY_THROWS_EXCEPTION(DuplicateKeyError,
                                 tree.insertBookmark(node, 0, makeBookmark(3, {}, {}, {})));
        const QPersistentModelIndex last = tree.index(0, 0, tree.index(4, 0, tree.root()));
        tree.removeBookmark(tree.index(1, 0, node));
        tree.removeFolder(tree.index(0, 0, tree.root()));
        QCOMPARE(shown(tree), u"0@ 13@ 13@2 13@1 6@ 9@ 12@ 12@5"_s);
        QCOMPARE(ArchiveTree::key(last), u"12@5"_s);
        QCOMPARE(folder->colBookmark()->Item(2)->Titel(), u"b"_s);
    }

    void longFaults()
    {
        const std::vector<ArchiveFault> faults(1000, {u"Name"_s, u"1.bkm"_s, u"weg"_s});
        QVERIFY(faultText(u"Kopf:"_s, {}).isEmpty());
        QCOMPARE(faultText(u"Kopf:"_s, {faults[0]}), u"Kopf:\n\n'1.bkm' (Ordner 'Name'):\nweg"_s);
        const QString text = faultText(u"Kopf:"_s, faults);
        QVERIFY(text.endsWith(u"\n... und 992 weitere"_s) && text.size() < 500);
    }

private:
    static QString shown(const ArchiveTree& tree, const QModelIndex& above = {})
    {
        QStringList keys;
        for (int row = 0; row < tree.rowCount(above); ++row) {
            const QModelIndex node = tree.index(row, 0, above);
            keys.append(ArchiveTree::key(node));
            if (tree.hasChildren(node))
                keys.append(shown(tree, node));
        }
        return keys.join(u' ');
    }
};

QTEST_GUILESS_MAIN(ArchiveRulesTest)
#include "ArchiveRulesTest.moc"
