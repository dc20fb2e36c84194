#include "ArchiveFixture.h"

using namespace Qt::StringLiterals;

// The archive window and files: what cannot be read or written, and the exports.
class ArchiveFilesTest : public QObject {
    Q_OBJECT
private slots:
    void init() { failOnWarnings(); }

    void unreadableIndex()
    {
        ArchiveFixture f;
        const QByteArray index = f.bytes(u"Book.bkm"_s);
        const QByteArray broken = index.left(336) + index.left(336);
        f.write(u"Book.bkm"_s, broken);
        f.open();
        QTRY_COMPARE(f.shown(), QString());
        const QStringList texts = f.shell.fakePrompt.takeTexts();
        QCOMPARE(texts.size(), 1);
        QVERIFY2(texts.first().contains(f.path(u"Book.bkm"_s)), qPrintable(texts.first()));
        f.choose(u"mn_AddOrdner");
        QVERIFY(f.shell.fakePrompt.takeTexts().join(u' ').contains(u"erst geändert werden"_s));
        f.window->Buch().IsEdit(true);
        f.choose(u"mn_Speichern");
        QVERIFY(f.shell.fakePrompt.takeTexts().join(u' ').contains(u"nicht geschrieben"_s));
        QCOMPARE(f.bytes(u"Book.bkm"_s), broken);
        f.write(u"Book.bkm"_s, index);
        f.choose(u"mn_Laden");
        f.select(u"Archiv"_s);
        f.choose(u"mn_AddOrdner");
        QCOMPARE(f.shown(), u"Neuer Ordner() A(a1 a2) B()"_s);
    }

    void unreadableFolder()
    {
        ArchiveFixture f;
        QFile::remove(f.path(u"1.bkm"_s));
        QDir().mkpath(f.path(u"1.bkm"_s));
        f.open();
        const QStringList texts = f.shell.fakePrompt.takeTexts();
        QCOMPARE(texts.size(), 1);
        QVERIFY(texts.first().contains(u"'1.bkm' (Ordner 'A')"_s));
        QCOMPARE(f.shown(), u"A() B()"_s);
        f.select(u"A"_s);
        for (const char16_t* item : {u"mn_AttrOrdner", u"mn_DelOrdner", u"mn_Hinzufügen"}) {
            f.choose(item);
            QCOMPARE(f.shell.fakePrompt.takeTexts().size(), 1);
        }
        QCOMPARE(f.held(), u"A() B()"_s);
        QVERIFY(!f.isChanged());
    }

    void unwritableFolder()
    {
        ArchiveFixture f;
        f.open();
        f.select(u"a1"_s);
        f.choose(u"mn_Loeschen");
        QFile::remove(f.path(u"1.bkm"_s));
        QVERIFY(QDir().mkpath(f.path(u"1.bkm/x"_s)));
        f.choose(u"mn_Speichern");
        QVERIFY(f.shell.fakePrompt.takeTexts().join(u' ').contains(u"'1.bkm' (Ordner 'A')"_s));
        QCOMPARE(f.shown(), u"A(a2) B()"_s); // not read anew: it is only here
        QVERIFY(f.isChanged() && f.window->Buch().colThema()->Item(1)->IsEdit());
        QVERIFY(QDir(f.path(u"1.bkm"_s)).removeRecursively());
        f.choose(u"mn_Speichern");
        QCOMPARE(f.shown(), u"A(a2) B()"_s);
    }

    void exports_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("dialog");
        QTest::addColumn<QByteArray>("start");
        const QString text = u"Text-Datei (*.txt)|*.txt"_s;
        const QString html = u"HTML-Datei (*.htm;*.html)|*.htm;*.html"_s;
        const auto row = [](const QString& item, const QString& title, const QString& filter,
                            const QByteArray& start) {
            QTest::newRow(qPrintable(item)) << item << title + u"|%1|"_s + filter << start;
        };
        row(u"mn_expdetText"_s, u"Ordner exportieren in Text Datei..."_s, text,
            "Thema: A\r\n\r\nU");
        row(u"mn_expdetHtml"_s, u"Ordner exportieren in HTML Datei..."_s, html, "<HTML><BODY>");
        row(u"mn_expdetNetscapeHtml"_s, u"Ordner exportieren in Netscape Bookmark Dateiformat"_s,
            html, "<!DOCTYPE NETSCAPE");
        row(u"mn_ExpTxt"_s, u"Archiv exportieren in Text Datei..."_s, text, "Thema: A\r\n\r\nU");
        row(u"mn_ExpHtml"_s, u"Archiv exportieren in HTML Datei..."_s, html, "<HTML><TITLE>");
        row(u"mn_ExpNetscapeHtml"_s, u"Archiv exportieren in Netscape Bookmark Dateiformat"_s, html,
            "<!DOCTYPE NETSCAPE");
    }
    void exports()
    {
        QFETCH(QString, item);
        QFETCH(QString, dialog);
        QFETCH(QByteArray, start);
        ArchiveFixture f;
        f.open();
        f.select(u"A"_s);
        FakePrompt& prompt = f.shell.fakePrompt;
        const QString wanted = dialog.arg(f.shell.programFolder());
        const auto choose = [&] { f.action(item.toStdU16String().c_str())->trigger(); };

        prompt.answerFileName({});
        choose();
        QCOMPARE(prompt.takeTexts(), QStringList{wanted});

        prompt.answerFileName(f.path(u"missing/x"_s));
        choose();
        const QStringList failed = prompt.takeTexts();
        QVERIFY(failed.size() == 2 && failed[1].startsWith(u"Meldung|Exclamation|Die Datei "_s));
        QCOMPARE(f.window->cursor().shape(), Qt::ArrowCursor);

        const QString name = f.path(u"x #1"_s);
        const QString question = u"Meldung|Information|Der Export war erfolgreich, möchten Sie "
                                 "die Datei '%1' anzeigen ?"_s.arg(name);
        for (const bool yes : {false, true}) {
            prompt.answerFileName(name);
            prompt.answerYesNo(yes);
            choose();
            QCOMPARE(prompt.takeTexts(), (QStringList{wanted, question}));
            QCOMPARE(f.shell.visited, yes ? QStringList{name} : QStringList());
        }
        const QByteArray content = f.bytes(u"x #1"_s);
        QVERIFY(content.startsWith(start) && content.contains("http://a2"));
        QCOMPARE(content.contains('B' + QByteArray(start.startsWith("Thema") ? "\r" : "</H")),
                 item.startsWith(u"mn_Exp"_s));
        QVERIFY(!f.shell.dropSwitch.last());
    }
};

GUI_TEST_MAIN(ArchiveFilesTest)
#include "ArchiveFilesTest.moc"
