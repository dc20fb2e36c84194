#include "bookmarks/TreeMouse.h"
#include "bookmarks/TreeDrops.h"
#include "tests/gui/FakeShell.h"
#include "tests/gui/GuiTest.h"

#include <QDropEvent>
#include <QMimeData>
#include <QSignalSpy>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

class TreeMouseTest : public TestCase {
    Q_OBJECT
private slots:
    void init()
    {
        TestCase::init();
        m_shell = std::make_unique<FakeShell>();
        m_tree = std::make_unique<QTreeWidget>();
        m_tree->setHeaderHidden(true);
        m_root = new QTreeWidgetItem(m_tree.get(), {u"Archiv"_s, u"Archiv"_s});
        m_folder = new QTreeWidgetItem(m_root, {u"folder"_s, u"Dir"_s});
        m_link = new QTreeWidgetItem(m_folder, {u"link"_s, u"Url"_s, u"http://link/"_s});
        m_empty = new QTreeWidgetItem(m_root, {u"empty"_s, u"Dir"_s});
        m_root->setExpanded(true);
        m_folder->setExpanded(true);
        const auto column = [](int which) {
            return [which](const QModelIndex& node) {
                const QString text = node.siblingAtColumn(which).data().toString();
                return text.isEmpty() ? throw NotFoundError(text) : text;
            };
        };
        m_tree->setColumnCount(3);
        m_tree->hideColumn(1);
        m_tree->hideColumn(2);
        m_mouse = new TreeMouse(*m_tree, {column(1), column(2)});
        m_drops = new TreeDrops(*m_tree, *m_shell);
        connect(m_mouse, &TreeMouse::statusText, this,
                [this](const auto& text) { m_status = text; });
        connect(m_mouse, &TreeMouse::contextMenuWanted, this,
                [this] { m_events += u"context "_s; });
        connect(m_mouse, &TreeMouse::folderMenuWanted, this, [this] { m_events += u"menu "_s; });
        connect(m_mouse, &TreeMouse::openWanted, this, [this] { m_events += u"open "_s; });
        connect(m_drops, &TreeDrops::bookmarkDropped, this,
                [this](const auto& title, const auto& url) {
                    m_events += u"drop(%1|%2) "_s.arg(title, url);
                });
        m_tree->resize(300, 200);
        m_tree->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_tree.get()));
        m_status = u"-"_s;
        m_events.clear();
    }
    void cleanup()
    {
        m_tree.reset();
        m_shell.reset();
    }

    void leftClicks()
    {
        const QSignalSpy opened(m_tree.get(), &QTreeView::expanded);
        for (const bool open : {false, true}) {
            click(m_folder);
            QCOMPARE(m_folder->isExpanded(), open);
        }
        QCOMPARE(m_status, QString());
        click(m_empty); // has nothing to show, yet has two images
        QVERIFY(m_empty->isExpanded());
        QCOMPARE(opened.size(), 2);
        click(m_root);
        QVERIFY(m_root->isExpanded());
        click(m_link);
        QCOMPARE(m_status, u"http://link/"_s);
        QCOMPARE(m_tree->currentItem(), m_link);
        QCOMPARE(m_events, QString());
    }

    void otherButtons()
    {
        // Nothing selected: a click like any other, but a folder shows its menu.
        click(m_link, Qt::RightButton);
        QCOMPARE(m_events, QString());
        QCOMPARE(m_tree->currentItem(), m_link);
        QCOMPARE(m_status, u"http://link/"_s);
        // Something selected: one menu, wherever it is, and no other selection.
        for (const QPoint& place : {at(m_folder), at(m_root), QPoint(50, 190)}) {
            QTest::mouseClick(m_tree->viewport(), Qt::RightButton, {}, place);
            QCOMPARE(std::exchange(m_events, {}), u"context "_s);
            QCOMPARE(m_tree->selectedItems(), {m_link});
        }
        click(m_folder, Qt::MiddleButton);
        QCOMPARE(std::exchange(m_events, {}), u"menu "_s);
        m_tree->selectionModel()->clear();
        click(m_folder, Qt::RightButton);
        QCOMPARE(std::exchange(m_events, {}), u"menu "_s);
        QVERIFY(m_folder->isExpanded());
    }

    void drops()
    {
        m_shell->AddToHistory(u"http://x/"_s, u"a visit"_s);
        for (const auto& [item, text, result] :
             {std::tuple{m_folder, u"file:///C:/a/b.htm"_s, u"drop(b.htm|C:\\a\\b.htm) "_s},
              {m_empty, QString(), u"drop(|) "_s},
              {m_root, u"http://x/"_s, QString()},
              {nullptr, u"http://x/"_s, QString()}}) {
            QMimeData data;
            data.setImageData(1);
            if (!text.isNull())
                data.setText(text);
            const QPoint place = item ? at(item) : QPoint(50, 190);
            m_tree->setCurrentItem(m_link);
            QCOMPARE(send<QDragEnterEvent>(place, data), Qt::CopyAction);
            QCOMPARE(send<QDragMoveEvent>(place, data), Qt::CopyAction);
            QCOMPARE(m_drops->DropHighlight(), m_tree->indexAt(place));
            QCOMPARE(m_tree->currentItem(), item);
            QCOMPARE(m_events, QString());
            QCOMPARE(send<QDropEvent>(place, data), Qt::CopyAction);
            QCOMPARE(std::exchange(m_events, {}), result);
            QVERIFY(!m_drops->DropHighlight().isValid());
        }
    }

private:
    QPoint at(QTreeWidgetItem* item) const { return m_tree->visualItemRect(item).center(); }
    void click(QTreeWidgetItem* item, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(m_tree->viewport(), button, {}, at(item));
    }
    /// The action that the tree takes; IgnoreAction when it refuses.
    template <typename Event>
    Qt::DropAction send(const QPoint& place, const QMimeData& data)
    {
        Event event(place, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
        event.setDropAction(Qt::MoveAction);
        QApplication::sendEvent(m_tree->viewport(), &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }

    std::unique_ptr<FakeShell> m_shell;
    std::unique_ptr<QTreeWidget> m_tree;
    TreeMouse* m_mouse = nullptr;
    TreeDrops* m_drops = nullptr;
    QTreeWidgetItem* m_root = nullptr;
    QTreeWidgetItem* m_folder = nullptr;
    QTreeWidgetItem* m_link = nullptr;
    QTreeWidgetItem* m_empty = nullptr;
    QString m_status;
    QString m_events;
};

GUI_TEST_MAIN(TreeMouseTest)
#include "TreeMouseTest.moc"
