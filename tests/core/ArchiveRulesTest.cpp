#include "SampleArchive.h"
#include "bookmarks/ArchiveMenuStates.h"
#include "bookmarks/ArchiveTree.h"
#include "bookmarks/FolderNames.h"

#include <QAbstractItemModelTester>

using namespace Qt::StringLiterals;
using Selection = ArchiveSelection;

class ArchiveRulesTest : public TestCase {
    Q_OBJECT
private slots:
    void menus()
    {
        const auto with = [](ArchiveSelection selection, bool enabled) {
            QStringList items;
            for (const auto& states : {folderMenuStates(selection), bookmarkMenuStates(selection)})
                for (const MenuState& state : states)
                    if (state.enabled == enabled)
                        items << state.item.toString();
            return items.join(u' ');
        };
        QCOMPARE(with(Selection::EmptyFolder, true),
                 u"mn_AddOrdner mn_DelOrdner mn_AttrOrdner mn_OpenAllBkm mn_Hinzufügen"_s);
        QCOMPARE(with(Selection::EmptyFolder, false),
                 u"mn_exportdetail mn_OpenBkm mn_Loeschen mn_Eigenschaften"_s);
        QCOMPARE(with(Selection::Bookmark, true),
                 u"mn_OpenBkm mn_Hinzufügen mn_Loeschen mn_Eigenschaften"_s);
        QCOMPARE(with(Selection::Bookmark, false),
                 u"mn_AddOrdner mn_DelOrdner mn_AttrOrdner mn_exportdetail mn_OpenAllBkm"_s);
    }

    void names()
    {
        QCOMPARE(newDirName([](const QString& name) { return name != u"Neuer Ordner"; }),
                 u"Neuer Ordner (1)"_s);
        QCOMPARE(cleanDirName(u"  Alt "_s), u"Alt"_s);
        QCOMPARE(cleanDirName(u"a\r\nb\u2028c\nd"_s), u"a b c d"_s);
        const auto check = [](const QString& name) {
            return checkDirName(u"Alt"_s, name,
                                [](const QString& its) { return its != u"Archiv"; });
        };
        QVERIFY(check(u"Alt"_s) == DirNameCheck::Unchanged);
        QVERIFY(check(QString()) == DirNameCheck::Empty);
        QVERIFY(check(u"Archiv"_s) == DirNameCheck::Taken);
        QVERIFY(check(u"ARCHIV"_s) == DirNameCheck::Accepted);
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
        const QPersistentModelIndex last = tree.index(0, 0, tree.index(4, 0, tree.root()));
        tree.removeBookmark(tree.index(1, 0, node));
        tree.removeFolder(tree.index(0, 0, tree.root()));
        QCOMPARE(shown(tree), u"0@ 13@ 13@2 13@1 6@ 9@ 12@ 12@5"_s);
        QCOMPARE(ArchiveTree::key(last), u"12@5"_s);
        QCOMPARE(folder->colBookmark()->Item(2)->Titel(), u"b"_s);
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
