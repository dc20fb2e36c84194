#include "tests/gui/GuiTest.h"

#include "browser/services/FindBar.h"
#include "browser/services/PageMenu.h"

#include <QLineEdit>
#include <QMenu>
#include <QShortcut>

using namespace Qt::StringLiterals;

/// The bar over a page, with the searches it asks for as "text[ back][ case]".
class FindBarTest : public WindowTest {
    Q_OBJECT
private slots:
    void init()
    {
        TestCase::init();
        m_page = std::make_unique<QWidget>();
        m_page->resize(600, 400);
        m_bar = new FindBar(m_page.get());
        m_text = m_bar->findChild<QLineEdit*>(u"txtFind"_s);
        connect(m_bar, &FindBar::find, this, [this](const QString& text, bool back, bool exact) {
            m_asked << text + (back ? u" back"_s : QString()) + (exact ? u" case"_s : QString());
        });
        show(*m_page);
        m_bar->open();
        m_asked.clear();
    }

    void keys()
    {
        QCOMPARE(QApplication::focusWidget(), m_text);
        QTest::keyClicks(m_text, u"ab"_s);
        QTest::keyClick(m_text, Qt::Key_Return);
        QTest::keyClick(m_text, Qt::Key_Enter, Qt::ShiftModifier | Qt::KeypadModifier);
        QCOMPARE(m_asked, (QStringList{u"a"_s, u"ab"_s, u"ab"_s, u"ab back"_s}));
        m_asked.clear();
        QTest::keyClick(find(u"chkCase"_s), Qt::Key_Space);
        QCOMPARE(m_asked, (QStringList{{}, u"ab case"_s}));
    }

    void escapeBelongsToTheBar()
    {
        QShortcut stop(Qt::Key_Escape, m_page.get());
        stop.setContext(Qt::WidgetWithChildrenShortcut);
        const QSignalSpy stopped(&stop, &QShortcut::activated);
        const QSignalSpy closed(m_bar, &FindBar::closed);
        QTest::keyClick(m_text, Qt::Key_Escape);
        QCOMPARE(closed.size(), 1);
        QCOMPARE(stopped.size(), 0);
        QVERIFY(m_bar->isHidden());
        QCOMPARE(m_asked.last(), QString());
        m_bar->again(); // as after a navigation
        QCOMPARE(m_asked.last(), QString());
    }

    void menu()
    {
        QStringList done;
        PageMenuCommands commands;
        for (const PageMenuItem item : pageMenuItems({}))
            commands.items.insert(item, [&done] { done << u"item"_s; });
        commands.correct = [&done](const QString& word) { done << word; };
        const PageMenuTarget target{.suggestions = {u"A&B"_s}, .idle = {PageMenuItem::Back}};
        QMenu* const menu = makePageMenu(m_page.get(), target, commands);
        QVERIFY(!menu->findChild<QAction*>(u"mn_Back"_s)->isEnabled());
        menu->actions().constFirst()->trigger();
        menu->findChild<QAction*>(u"mn_Print"_s)->trigger();
        QCOMPARE(done, (QStringList{u"A&B"_s, u"item"_s}));
    }

private:
    std::unique_ptr<QWidget> m_page;
    FindBar* m_bar = nullptr;
    QLineEdit* m_text = nullptr;
    QStringList m_asked;
};

GUI_TEST_MAIN(FindBarTest)
#include "FindBarTest.moc"
