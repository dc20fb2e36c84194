#include "ArchiveFixture.h"
#include "bookmarks/StatusPanel.h"

#include <QAbstractButton>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {
const QString askSave = u"Meldung|Question|Änderungen am Archiv speichern ?"_s;
const QString askDelete = u"Meldung|Question|Der Ordner ist nicht leer, trotzdem löschen ?"_s;

} // namespace

class ArchiveWindowTest : public QObject {
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }

    void firstRun()
    {
        ArchiveFixture f(false);
        f.open();
        QVERIFY(f.shell.isOpenBook);
        QCOMPARE(f.window->windowTitle(), u"Bookmark Archiv"_s);
        QCOMPARE(f.shown(), QString());
        QCOMPARE(f.root().data().toString(), u"Archiv"_s);
        QVERIFY(!f.view().selectedNode().isValid());
        f.choose(u"mn_Laden");
        QVERIFY(f.shown().startsWith(u"Info + Lizenzvertrag(Tessera Software-Lizenzvertrag "_s));
        QTest::keyClick(&f.view(), Qt::Key_Escape);
        QTRY_VERIFY(f.window.isNull());
        QVERIFY(!f.shell.isOpenBook);
    }

    void menuBar()
    {
        ArchiveFixture f;
        f.open();
        QStringList lines;
        const auto walk = [&lines](auto& self, const QWidget* menu, int depth) -> void {
            for (const QAction* action : menu->actions()) {
                lines << QString(depth, u'.') + action->objectName() + u'|' +
                             (action->isSeparator() ? u"-"_s : action->text());
                if (action->menu() != nullptr)
                    self(self, action->menu(), depth + 1);
            }
        };
        walk(walk, f.window->findChild<QWidget*>(u"mn_Archive"_s), 1);
        QCOMPARE(lines.join(u'\n'),
                 u".mn_Laden|&Laden\n.mn_Speichern|&Speichern\n.mn_tz3|-\n"
                 ".mn_export|&Exportieren\n..mn_ExpTxt|in eine &Text Datei\n..mn_tz4|-\n"
                 "..mn_ExpHtml|in eine &HTML Datei\n..mn_tz8|-\n"
                 "..mn_ExpNetscapeHtml|in eine &Netscape Bookmark Datei\n.mn_tz1|-\n"
                 ".mn_Schließen|Schlie&ßen"_s);
        lines.clear();
        walk(walk, f.window->findChild<QWidget*>(u"mn_Modify"_s), 1);
        QCOMPARE(lines.join(u'\n'),
                 u".mn_Ordner|&Ordner\n..mn_AddOrdner|&Hinzufügen\n..mn_DelOrdner|&Löschen\n"
                 "..mn_AttrOrdner|&Umbenennen\n..mn_tz7|-\n..mn_exportdetail|&Exportieren\n"
                 "...mn_expdetText|in eine &Text Datei\n...mn_tz6|-\n"
                 "...mn_expdetHtml|in eine &HTML Datei\n...mn_tz9|-\n"
                 "...mn_expdetNetscapeHtml|in eine &Netscape Bookmark Datei\n.mn_tz5|-\n"
                 ".mn_Bookmark|&Bookmark\n..mn_OpenAllBkm|&Alle öffnen\n..mn_OpenBkm|Ö&ffnen\n"
                 "..mn_tz10|-\n..mn_Hinzufügen|&Hinzufügen\n..mn_Loeschen|&Löschen\n"
                 "..mn_Eigenschaften|&Eigenschaften"_s);
        f.select(u"B"_s);
        emit f.action(u"mn_Modify")->menu()->aboutToShow();
        QVERIFY(f.action(u"mn_AddOrdner")->isEnabled());
        QVERIFY(!f.action(u"mn_exportdetail")->isEnabled());
        QVERIFY(!f.action(u"mn_Loeschen")->isEnabled());
    }

    void contextMenu_data()
    {
        QTest::addColumn<QString>("selected");
        QTest::addColumn<QString>("visible");
        QTest::newRow("root") << u"Archiv"_s << u"mn_Ordner"_s;
        QTest::newRow("folder") << u"A"_s << u"mn_Ordner mn_tz5 mn_Bookmark"_s;
        QTest::newRow("bookmark") << u"a1"_s << u"mn_Bookmark"_s;
        QTest::newRow("nothing") << QString() << u"no menu"_s;
    }
    void contextMenu()
    {
        QFETCH(QString, selected);
        QFETCH(QString, visible);
        ArchiveFixture f;
        f.open();
        f.select(selected);
        QMenu* menu = f.action(u"mn_Modify")->menu();
        QString seen = u"no menu"_s;
        connect(menu, &QMenu::aboutToShow, this, [&] {
            QStringList names;
            for (const QAction* action : menu->actions())
                if (action->isVisible())
                    names << action->objectName();
            seen = names.join(u' ');
            // Closing has to wait until the menu is gone.
            f.window->close();
            QVERIFY(f.shell.isOpenBook);
            QMetaObject::invokeMethod(menu, &QMenu::close, Qt::QueuedConnection);
        });
        QContextMenuEvent key(QContextMenuEvent::Keyboard, {}, {});
        QCoreApplication::sendEvent(f.view().viewport(), &key);
        QCOMPARE(seen, visible);
        QCOMPARE(f.shell.isOpenBook, selected.isEmpty());
    }

    void newFolders()
    {
        ArchiveFixture f;
        f.open();
        f.select(u"Archiv"_s);
        f.choose(u"mn_AddOrdner");
        QCOMPARE(f.editor()->text(), u"Neuer Ordner"_s);
        f.choose(u"mn_AddOrdner"); // takes the first label over and goes on behind it
        f.choose(u"mn_AddOrdner");
        f.type(u"  Größe\n<b>&amp;  "_s);
        const QString all = u"Neuer Ordner() Neuer Ordner (1)() Größe <b>&amp;() A(a1 a2) B()"_s;
        QTRY_COMPARE(f.shown(), all);
        QCOMPARE(f.held(), all);
        QVERIFY(f.isChanged());
        const auto folder = f.window->selectedFolder();
        QCOMPARE(folder->FileName() + folder->DirName(), u"5.bkmGröße <b>&amp;"_s);
        f.choose(u"mn_Speichern");
        QCOMPARE(f.shown(), all);
        QCOMPARE(f.folder(2).data(ArchiveTree::KeyRole).toString(), u"3@"_s);
        QVERIFY(!f.isChanged());
    }

    void labels_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("message");
        const QString taken = u"Meldung|Exclamation|Der Ordner mit dem Namen '%1' existiert schon "
                              "!\nBitte wählen Sie einen anderen Namen."_s;
        const QString none;
        const auto row = [](const char* title, const QString& typed, Qt::Key key,
                            const QString& name, const QString& message) {
            QTest::newRow(title) << typed << key << name << message;
        };
        row("Enter", u"Neu"_s, Qt::Key_Return, u"Neu"_s, none);
        row("Tab", u"Neu"_s, Qt::Key_Tab, u"Neu"_s, none);
        row("Escape", u"Neu"_s, Qt::Key_Escape, u"A"_s, none);
        row("unchanged", u" A "_s, Qt::Key_Return, u"A"_s, none);
        row("other case", u"archiv"_s, Qt::Key_Return, u"archiv"_s, none);
        row("empty", u"  "_s, Qt::Key_Return, u"A"_s,
            u"Meldung|Exclamation|Der Ordner muß einen Namen haben !"_s);
        row("folder", u"B"_s, Qt::Key_Return, u"A"_s, taken.arg(u"B"_s));
        row("bookmark", u"a2"_s, Qt::Key_Enter, u"A"_s, taken.arg(u"a2"_s));
        row("root", u" Archiv"_s, Qt::Key_Return, u"A"_s, taken.arg(u"Archiv"_s));
    }
    void labels()
    {
        QFETCH(QString, typed);
        QFETCH(Qt::Key, key);
        QFETCH(QString, name);
        QFETCH(QString, message);
        ArchiveFixture f;
        f.open();
        f.select(u"A"_s);
        QTest::keyClick(&f.view(), Qt::Key_F2);
        QVERIFY(f.editor() != nullptr);
        f.editor()->setText(typed);
        QPointer<QLineEdit> first = f.editor();
        QTest::keyClick(f.editor(), key);
        QTRY_VERIFY(first.isNull());
        QTRY_COMPARE(f.view().isEditing(), !message.isEmpty());
        QCOMPARE(f.shell.fakePrompt.takeTexts(),
                 message.isEmpty() ? QStringList() : QStringList{message});
        QCOMPARE(f.view().selectedNode().data().toString(), name);
        QCOMPARE(f.held(), name + u"(a1 a2) B()"_s);
        QCOMPARE(f.isChanged(), name != u"A");
        QCOMPARE(f.window->selectedFolder()->IsEdit(), f.isChanged());
        if (f.view().isEditing())
            QTest::keyClick(f.editor(), Qt::Key_Escape);
        const QList<bool>& drops = f.shell.dropSwitch;
        QVERIFY(drops.count(true) == drops.count(false) && !drops.value(drops.size() - 1));
    }

    // A refused label keeps the command away that would go on with it.
    void refusedLabelStopsCommand()
    {
        ArchiveFixture f;
        f.open();
        f.select(u"A"_s);
        f.choose(u"mn_AttrOrdner");
        f.editor()->setText(u"B"_s);
        f.choose(u"mn_DelOrdner");
        QTRY_VERIFY(f.view().isEditing());
        QCOMPARE(f.shell.fakePrompt.takeTexts().size(), 1);
        QCOMPARE(f.held(), u"A(a1 a2) B()"_s);
        f.editor()->setText(u"B"_s);
        f.window->close(); // is never stopped
        QTRY_VERIFY(f.window.isNull());
    }

    void deletedFolders()
    {
        ArchiveFixture f;
        f.open();
        f.select(u"A"_s);
        f.shell.fakePrompt.answerYesNo(false);
        f.shell.fakePrompt.whileOpen([&f] { f.select(u"B"_s); });
        f.choose(u"mn_DelOrdner");
        QCOMPARE(f.shell.fakePrompt.takeTexts(), QStringList{askDelete});
        QCOMPARE(f.shown(), u"A(a1 a2) B()"_s);
        f.choose(u"mn_DelOrdner"); // B is empty: nobody is asked
        QCOMPARE(f.shown(), u"A(a1 a2)"_s);
        QCOMPARE(f.bytes(u"Book.bkm"_s).size(), themaRecordSize);
        f.select(u"a1"_s);
        f.choose(u"mn_DelOrdner");
        QTest::keyClick(&f.view(), Qt::Key_Delete);
        QCOMPARE(f.held(), u"A(a2)"_s);
        QVERIFY(f.isChanged());
        f.select(u"A"_s);
        QTest::keyClick(&f.view(), Qt::Key_Delete);
        f.shell.fakePrompt.answerYesNo(true);
        f.shell.fakePrompt.whileOpen([&f] { f.window->close(); });
        f.choose(u"mn_DelOrdner");
        QCOMPARE(f.shell.fakePrompt.takeTexts(), QStringList{askDelete});
        QTRY_VERIFY(f.window.isNull()); // after the command, and all was saved by it
        QCOMPARE(f.bytes(u"Book.bkm"_s), QByteArray());
    }

    void bookmarks()
    {
        ArchiveFixture f;
        f.open();
        f.select(u"Archiv"_s);
        QVERIFY_THROWS_EXCEPTION(NotFoundError, f.window->AddBkmToArchive({}, {}, {}));
        // Types into the properties dialog once it is open.
        const auto answer = [&f](const QString& title) {
            QTimer::singleShot(0, f.window, [&f, title] {
                QCOMPARE(f.shell.dropSwitch, QList<bool>{true});
                const QWidget* dialog = QApplication::activeModalWidget();
                dialog->findChild<QLineEdit*>(u"Text1"_s)->setText(title);
                dialog->findChild<QAbstractButton*>(u"Ok"_s)->click();
            });
        };
        const auto choose = [&f](const QString& selected, const char16_t* item) {
            f.select(selected);
            f.shell.dropSwitch.clear();
            f.choose(item);
            f.shell.fakePrompt.takeTexts();
            return f.shown() == f.held() ? f.shown() : u"not in step"_s;
        };
        QCOMPARE(choose(u"Archiv"_s, u"mn_Hinzufügen"), u"A(a1 a2) B()"_s);
        QCOMPARE(choose(u"A"_s, u"mn_Eigenschaften"), u"A(a1 a2) B()"_s);
        QVERIFY(!f.isChanged());
        answer(u"n1"_s);
        QCOMPARE(choose(u"A"_s, u"mn_Hinzufügen"), u"A(n1 a1 a2) B()"_s);
        QCOMPARE(f.shell.dropSwitch, (QList<bool>{true, false}));
        QVERIFY(f.window->selectedFolder()->IsEdit() && f.isChanged());
        f.shell.fakePrompt.answerYesNo(true); // "http://" is there already
        answer(u"n2"_s);
        QCOMPARE(choose(u"a1"_s, u"mn_Hinzufügen"), u"A(n1 a1 n2 a2) B()"_s);
        answer(u"<b>&a"_s);
        QCOMPARE(choose(u"a1"_s, u"mn_Eigenschaften"), u"A(n1 <b>&a n2 a2) B()"_s);
        QCOMPARE(choose(u"<b>&a"_s, u"mn_Loeschen"), u"A(n1 n2 a2) B()"_s);
        answer(u"n3"_s);
        QCOMPARE(choose(u"B"_s, u"mn_Hinzufügen"), u"A(n1 n2 a2) B(n3)"_s);
        QCOMPARE(choose(u"n3"_s, u"mn_Loeschen"), u"A(n1 n2 a2) B()"_s);
        f.select(u"B"_s); // its collection is there, but empty
        f.window->UpdateBookmark(nullptr, u"Enter"_s, {}, {});
        QCOMPARE(f.held(), u"A(n1 n2 a2) B(Enter)"_s);
    }

    void mouseAndDrop()
    {
        ArchiveFixture f;
        f.open();
        const auto click = [&f](const QString& text, Qt::MouseButton button) {
            QTest::mouseClick(f.view().viewport(), button, {},
                              f.view().visualRect(f.node(text)).center());
        };
        click(u"A"_s, Qt::LeftButton);
        QCOMPARE(f.folder(0).data(ArchiveTree::ImageRole).toString(), u"OpenDir"_s);
        click(u"a2"_s, Qt::LeftButton);
        QCOMPARE(f.window->findChild<StatusPanel*>()->panelText(), u"http://a2"_s);
        QMimeData data;
        data.setText(u"file:///C:/Daten/liste.htm"_s);
        const QPoint place = f.view().visualRect(f.node(u"a1"_s)).center();
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(f.view().viewport(), &enter);
        QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(f.view().viewport(), &drop);
        QCOMPARE(f.shown(), u"A(a1 liste.htm a2) B()"_s);
        QCOMPARE(f.window->Buch().colThema()->Item(1)->colBookmark()->Item(2)->Url(),
                 u"C:\\Daten\\liste.htm"_s);
        click(u"a1"_s, Qt::LeftButton);
        QTest::mouseDClick(f.view().viewport(), Qt::LeftButton, {}, place);
        QCOMPARE(f.shell.visited, QStringList{u"http://a1"_s});
        QVERIFY(f.isChanged());
    }

    void opening()
    {
        ArchiveFixture f;
        f.open();
        f.select(u"a2"_s);
        QTest::keyClick(&f.view(), Qt::Key_Enter);
        f.choose(u"mn_OpenAllBkm");
        QCOMPARE(f.shell.visited, QStringList{u"http://a2"_s});
        f.select(u"A"_s);
        f.choose(u"mn_OpenBkm");
        f.choose(u"mn_OpenAllBkm");
        QCOMPARE(f.shell.visited, (QStringList{u"http://a2"_s, u"http://a1"_s, u"http://a2"_s}));
    }

    void closing_data()
    {
        QTest::addColumn<bool>("bookChanged");
        QTest::addColumn<bool>("folderChanged");
        QTest::addColumn<bool>("yes");
        QTest::newRow("unchanged") << false << false << false;
        QTest::newRow("no") << true << true << false;
        QTest::newRow("yes") << true << true << true;
        QTest::newRow("folder alone: yes saves nothing") << false << true << true;
    }
    void closing()
    {
        QFETCH(bool, bookChanged);
        QFETCH(bool, folderChanged);
        QFETCH(bool, yes);
        ArchiveFixture f;
        f.open();
        const QByteArray before = f.bytes(u"1.bkm"_s);
        f.select(u"a1"_s);
        f.window->selectedBookmark()->Titel(u"x"_s);
        f.window->selectedFolder()->IsEdit(folderChanged);
        f.window->Buch().IsEdit(bookChanged);
        if (folderChanged) {
            f.shell.fakePrompt.answerYesNo(yes);
            f.shell.fakePrompt.whileOpen([&f] {
                f.window->close(); // asks no second time
                QVERIFY(f.shell.isOpenBook && f.shell.dropSwitch.last());
            });
        }
        f.choose(u"mn_Schließen");
        QTRY_VERIFY(f.window.isNull());
        QCOMPARE(f.shell.fakePrompt.takeTexts(),
                 folderChanged ? QStringList{askSave} : QStringList());
        QCOMPARE(f.bytes(u"1.bkm"_s) != before, bookChanged && yes);
        QVERIFY(!f.shell.isOpenBook);
    }

    void loadingDropsChanges()
    {
        ArchiveFixture f;
        f.open();
        f.select(u"a1"_s);
        f.choose(u"mn_Loeschen");
        f.choose(u"mn_Laden");
        QCOMPARE(f.shown(), u"A(a1 a2) B()"_s);
        QVERIFY(f.isChanged());
    }
};

GUI_TEST_MAIN(ArchiveWindowTest)
#include "ArchiveWindowTest.moc"
