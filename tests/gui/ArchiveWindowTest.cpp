#include "ArchiveFixture.h"
#include "bookmarks/ClosedArchive.h"
#include "bookmarks/frmBMProperty.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDropEvent>
#include <QLabel>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTimer>

using namespace Qt::StringLiterals;

class ArchiveWindowTest : public WindowTest {
    Q_OBJECT
private slots:
    void keysReachNodes()
    {
        for (const Qt::Key first : {Qt::Key_Down, Qt::Key_Home}) {
            OpenArchive f;
            QTest::keyClick(&f.view(), first);
            QCOMPARE(f.view().selectedNode(), f.root());
            f.select(u"A"_s);
            QTest::keyClick(&f.view(), Qt::Key_Right);
            QTest::keyClick(&f.view(), Qt::Key_Down);
            const auto* status = f.window->findChild<QLabel*>(u"panel1"_s);
            QCOMPARE(status->text(), u"http://a1"_s);
            f.window->UpdateBookmark(f.window->selectedBookmark(), u"a1"_s, u"http://new"_s, {});
            QCOMPARE(status->text(), u"http://new"_s);
            f.choose(first == Qt::Key_Home ? u"mn_Loeschen" : u"mn_Laden");
            QCOMPARE(status->text(), QString());
            f.select(u"a2"_s);
            QTest::keyClick(&f.view(), Qt::Key_Home);
            QCOMPARE(status->text(), QString());
        }
    }

    void findsNodes()
    {
        OpenArchive f;
        f.select(u"B"_s);
        f.window->AddBkmToArchive(u"Über A"_s, u"http://x"_s, u"ein A1\r\nzwei"_s);
        f.view().collapseAll();
        auto* line = f.window->findChild<QLineEdit*>(u"txtFind"_s);
        const auto* hits = f.window->findChild<QLabel*>(u"lblHits"_s);
        const auto seen = [&] { return f.view().selectedNode().data().toString() + hits->text(); };
        QTest::keyClick(&f.view(), Qt::Key_F, Qt::ControlModifier);
        QTRY_VERIFY(line->hasFocus());
        QTest::keyClicks(line, u"a1"_s);
        QCOMPARE(seen(), u"a11 von 2"_s);
        QVERIFY(f.view().isExpanded(f.node(u"A"_s)) && f.window->isVisible());
        QTest::keyClick(line, Qt::Key_Return);
        QCOMPARE(seen(), u"Über A2 von 2"_s); // by its description
        QTest::keyClick(line, Qt::Key_F3);
        QCOMPARE(seen(), u"a11 von 2"_s);
        f.select(u"A"_s);
        f.window->AddBkmToArchive(u"new a1"_s, {}, {});
        QTRY_COMPARE(seen(), u"new a13"_s); // counted anew, nothing else selected
        QTest::keyClick(line, Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(seen(), u"Über A3 von 3"_s);
        f.select(u"A"_s);
        f.choose(u"mn_AddOrdner"); // before all others
        f.view().commitLabel();
        line->setText(u"ÜBER"_s);
        QCOMPARE(seen(), u"Über A1 von 1"_s);
        line->setText(u"über a\u00adb"_s);
        QCOMPARE(seen(), u"Über ANicht gefunden"_s);
        line->setFocus();
        QTest::keyClick(line, Qt::Key_Escape);
        QVERIFY(line->isHidden() || !line->isVisible());
        QVERIFY(f.view().hasFocus() && f.window->isVisible());
    }

    void newFolders()
    {
        OpenArchive f;
        f.select(u"Archiv"_s);
        f.choose(u"mn_AddOrdner");
        f.choose(u"mn_AddOrdner"); // takes the first label over and goes on behind it
        f.choose(u"mn_AddOrdner");
        f.editor()->setText(u"  Größe\n<b>&amp;  "_s);
        QTest::keyClick(f.editor(), Qt::Key_Return);
        const QString all = u"Neuer Ordner() Neuer Ordner (1)() Größe <b>&amp;() A(a1 a2) B()"_s;
        QTRY_COMPARE(f.shown(), all);
        QCOMPARE(f.held(), all);
        f.choose(u"mn_Speichern");
        QCOMPARE(f.shown(), all);
        QVERIFY(!f.isChanged());
    }

    void labels()
    {
        OpenArchive f;
        f.select(u"A"_s);
        QTest::keyClick(&f.view(), Qt::Key_F2);
        f.editor()->setText(u"a2"_s);
        QPointer<QLineEdit> first = f.editor();
        QTest::keyClick(f.editor(), Qt::Key_Return);
        QTRY_VERIFY(first.isNull() && f.view().isEditing());
        QCOMPARE(f.shell.fakePrompt.takeTexts(),
                 QStringList(u"Meldung|Exclamation|Der Ordner mit dem Namen 'a2' existiert schon "
                             "!\nBitte wählen Sie einen anderen Namen."_s));
        QTest::keyClicks(f.editor(), QString(201, u'x'));
        QVERIFY(f.window->findChild<QLabel*>(u"panel1"_s)->text().startsWith(u"Wird nach 200"_s));
        QTest::keyClick(f.editor(), Qt::Key_Escape);
        QTRY_VERIFY(!f.view().isEditing());
        QCOMPARE(f.held(), u"A(a1 a2) B()"_s);
        QVERIFY(!f.isChanged());
        QTest::keyClick(&f.view(), Qt::Key_F2);
        f.editor()->setText(u"Neu"_s);
        QTest::keyClick(f.editor(), Qt::Key_Return);
        QTRY_COMPARE(f.held(), u"Neu(a1 a2) B()"_s);
        QVERIFY(f.isChanged() && f.window->selectedFolder()->IsEdit());
    }

    void deletedFolders()
    {
        OpenArchive f;
        f.select(u"A"_s);
        f.shell.fakePrompt.answerYesNo(false);
        f.choose(u"mn_DelOrdner");
        QCOMPARE(f.shell.fakePrompt.takeTexts(),
                 QStringList(u"Meldung|Question|Der Ordner ist nicht leer, trotzdem löschen ?"_s));
        QCOMPARE(f.shown(), u"A(a1 a2) B()"_s);
        f.select(u"B"_s);
        f.choose(u"mn_DelOrdner"); // B is empty: nobody is asked
        QCOMPARE(f.shown(), u"A(a1 a2)"_s);
        QCOMPARE(f.bytes(u"Book.bkm"_s).size(), themaRecordSize);
    }

    void bookmarks()
    {
        OpenArchive f;
        f.select(u"A"_s);
        f.window->AddBkmToArchive(u"n1"_s, u"u"_s, {});
        QCOMPARE(f.shown(), u"A(n1 a1 a2) B()"_s);
        QVERIFY(f.window->selectedFolder()->IsEdit() && f.isChanged());
        f.select(u"a1"_s);
        QTimer::singleShot(0, f.window, [] {
            const QWidget* dialog = QApplication::activeModalWidget();
            dialog->findChild<QLineEdit*>(u"Text1"_s)->setText(u"n2"_s);
            dialog->findChild<QAbstractButton*>(u"Ok"_s)->click();
        });
        f.choose(u"mn_Hinzufügen");
        QCOMPARE(f.shown(), u"A(n1 a1 n2 a2) B()"_s);
        f.select(u"a1"_s);
        QTest::keyClick(&f.view(), Qt::Key_Delete);
        QCOMPARE(f.shown(), u"A(n1 n2 a2) B()"_s);
        QMimeData data;
        data.setText(u"file:///C:/liste.htm"_s);
        const QPoint place = f.view().visualRect(f.node(u"n2"_s)).center();
        const auto offered = Qt::CopyAction | Qt::MoveAction;
        QDragEnterEvent enter(place, offered, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(f.view().viewport(), &enter);
        QDropEvent drop(place, offered, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(f.view().viewport(), &drop);
        QCOMPARE(drop.dropAction(), Qt::CopyAction); // after a move the source deletes its data
        QCOMPARE(f.shown(), u"A(n1 n2 liste.htm a2) B()"_s);
        QCOMPARE(f.held(), f.shown());
        f.select(u"A"_s);
        f.choose(u"mn_OpenAllBkm");
        QCOMPARE(f.shell.visited,
                 (QStringList{u"u"_s, u"http://"_s, u"C:\\liste.htm"_s, u"http://a2"_s}));
    }

    void menus()
    {
        OpenArchive f;
        const auto place = [&f](const QString& text) {
            return f.view().visualRect(f.node(text)).center();
        };
        // The menu that the click brings up: whole, in part, or none.
        const auto click = [&](const QString& text, Qt::MouseButton button = Qt::LeftButton) {
            QString menu;
            QTimer::singleShot(0, f.window, [&] {
                QWidget* open = QApplication::activePopupWidget();
                if (open == nullptr)
                    return;
                const auto* folders = f.window->findChild<QAction*>(u"mn_Ordner"_s);
                menu = folders->isVisible() ? u"whole"_s : u"part"_s;
                open->close();
            });
            QTest::mouseClick(f.view().viewport(), button, {}, place(text));
            QCoreApplication::processEvents();
            return menu;
        };
        f.select(u"a1"_s);
        // Something selected: its menu, wherever the click is, and no other selection.
        QCOMPARE(click(u"B"_s, Qt::RightButton), u"part"_s);
        QCOMPARE(f.view().selectedNode(), f.node(u"a1"_s));
        QCOMPARE(click(u"B"_s, Qt::MiddleButton), u"whole"_s);
        f.select({});
        QCOMPARE(click(u"a2"_s, Qt::RightButton), QString());
        QCOMPARE(f.view().selectedNode(), f.node(u"a2"_s));
    }

    void closing()
    {
        for (const auto& [bookChanged, yes] :
             {std::pair{true, false}, {true, true}, {false, true}}) { // a folder alone is not saved
            OpenArchive f;
            const QByteArray before = f.bytes(u"1.bkm"_s);
            f.select(u"a1"_s);
            f.window->selectedBookmark()->Titel(u"x"_s);
            f.window->selectedFolder()->IsEdit(true);
            f.window->Buch().IsEdit(bookChanged);
            f.shell.fakePrompt.answerYesNo(yes);
            f.shell.fakePrompt.whileOpen([&f] { f.window->close(); }); // asks no second time
            f.choose(u"mn_Schließen");
            QTRY_VERIFY(f.window.isNull());
            QCOMPARE(f.shell.fakePrompt.takeTexts(),
                     QStringList(u"Meldung|Question|Änderungen am Archiv speichern ?"_s));
            QCOMPARE(f.bytes(u"1.bkm"_s) != before, bookChanged && yes);
        }
    }

    void theDialogChangesAndAdds()
    {
        OpenArchive f;
        f.select(u"a1"_s);
        FakePrompt& prompt = f.shell.fakePrompt;
        frmBMProperty dialog(*f.window, prompt, QIcon(), nullptr);
        const auto setFields = [this](const QString& name, const QString& url) {
            find<QLineEdit>(u"Text1"_s)->setText(name);
            find<QLineEdit>(u"Text2"_s)->setText(url);
            find<QPlainTextEdit>(u"Text3"_s)->setPlainText(u"x\ny"_s);
        };
        const auto stored = [&f](int position) {
            const Bookmark& its = *f.window->selectedFolder()->colBookmark()->Item(position);
            return its.Titel() + u'|' + its.Url() + u'|' + its.Info();
        };
        show(dialog);
        QCOMPARE(find<QLineEdit>(u"Text1"_s)->text(), u"a1"_s);
        setFields(u"n"_s, u"http://a1"_s);
        press(u"Ok"_s); // its own address is no question
        QCOMPARE(stored(1), u"n|http://a1|x\r\ny"_s);
        f.window->Buch().IsEdit(false);

        frmBMProperty another(*f.window, prompt, QIcon(), nullptr);
        another.bNewBkm(true);
        show(another);
        QTest::keyClicks(find(u"Text1"_s), QString(201, u'x'));
        const auto* const hint = find<QLabel>(u"Text1Hint"_s);
        QVERIFY(hint->isVisible() && hint->text().startsWith(u"Wird nach 200 Zeichen"_s));
        QCOMPARE(find(u"Text1"_s)->accessibleDescription(), hint->text());
        QTest::keyClick(find(u"Text1"_s), Qt::Key_Backspace);
        QVERIFY(!hint->isVisible());
        setFields(u"m"_s, u""_s);
        press(u"Ok"_s);
        QCOMPARE(prompt.takeTexts(), QStringList(u"Meldung|Critical|Feld darf nicht leer sein."_s));
        setFields(u"m"_s, u"http://a2"_s);
        prompt.answerYesNo(false);
        press(u"Ok"_s);
        const QStringList question(u"Meldung|Question|Die Url: http://a2 existiert bereits, "
                                   "trotzdem übernehmen ?"_s);
        QCOMPARE(prompt.takeTexts(), question);
        QVERIFY(another.isVisible() && !f.isChanged());
        prompt.answerYesNo(true);
        QTest::keyClick(find(u"Text1"_s), Qt::Key_Return);
        QCOMPARE(prompt.takeTexts(), question);
        QCOMPARE(stored(2), u"m|http://a2|x\r\ny"_s);
    }
};

QTEST_MAIN(ArchiveWindowTest)
#include "ArchiveWindowTest.moc"
