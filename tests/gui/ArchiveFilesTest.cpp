#include "ArchiveFixture.h"

#include <QClipboard>
#include <QLabel>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {
constexpr uid_t ordinaryUser = 65534;

/// While it lives, the program is not root, to whom no file is protected.
class OrdinaryUser {
public:
    OrdinaryUser()
    {
        if (::geteuid() == 0)
            m_isRoot = ::setresuid(ordinaryUser, ordinaryUser, 0) == 0;
    }
    ~OrdinaryUser()
    {
        if (m_isRoot && ::setresuid(0, 0, 0) != 0)
            qFatal("The program is not root any more");
    }
    Q_DISABLE_COPY_MOVE(OrdinaryUser)

private:
    bool m_isRoot = false;
};
} // namespace

// The archive window and files: what cannot be read or written, and the exports.
class ArchiveFilesTest : public TestCase {
    Q_OBJECT
private slots:
    void unreadableIndex()
    {
        ArchiveFixture f;
        const QByteArray index = f.bytes(u"Book.bkm"_s);
        const QByteArray broken = index.left(336) + index.left(336);
        writeBytes(f.path(u"Book.bkm"_s), broken);
        f.open();
        QTRY_COMPARE(f.shown(), QString());
        QVERIFY(f.shell.fakePrompt.takeTexts().join(u' ').contains(f.path(u"Book.bkm"_s)));
        writeBytes(f.path(u"x"_s), "older");
        f.choose(u"mn_ExpTxt"); // asks for no name
        QVERIFY(f.shell.fakePrompt.takeTexts().join(u' ').contains(u"exportiert"_s));
        QCOMPARE(f.bytes(u"x"_s), "older"_ba);
    }

    void unreadableFolder()
    {
        ArchiveFixture f;
        QFile::remove(f.path(u"1.bkm"_s));
        QDir().mkpath(f.path(u"1.bkm"_s));
        f.open();
        QVERIFY(f.shell.fakePrompt.takeTexts().join(u' ').contains(u"'1.bkm' (Ordner 'A')"_s));
        f.select(u"A"_s);
        for (const char16_t* item :
             {u"mn_AttrOrdner", u"mn_DelOrdner", u"mn_Hinzufügen", u"mn_ExpHtml"}) {
            f.choose(item);
            QCOMPARE(f.shell.fakePrompt.takeTexts().size(), 1);
        }
        QCOMPARE(f.held(), u"A() B()"_s);
    }

    void writeProtected_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addRow("folder of the program") << u"."_s;
        QTest::addRow("index") << u"Book.bkm"_s;
        QTest::addRow("one folder") << u"1.bkm"_s;
    }
    void writeProtected()
    {
        QFETCH(const QString, name);
        ArchiveFixture f;
        for (const QString& path : QDir(f.path({})).entryList(QDir::AllEntries | QDir::Hidden))
            QCOMPARE(::chown(qPrintable(f.path(path)), ordinaryUser, ordinaryUser), 0);
        const auto before = QFile::permissions(f.path(name));
        QVERIFY(QFile::setPermissions(f.path(name), QFile::ReadOwner | QFile::ExeOwner));
        {
            const OrdinaryUser user;
            f.open();
            QCOMPARE(f.shown(), u"A(a1 a2) B()"_s);
            const auto* const sign = f.window->findChild<QLabel*>(u"lblProtected"_s);
            QCOMPARE(sign->isVisible(), name != u"1.bkm");
            for (const auto& [node, item] : {std::pair{u"A"_s, u"mn_AttrOrdner"},
                                             {u"A"_s, u"mn_DelOrdner"},
                                             {u"A"_s, u"mn_Hinzufügen"},
                                             {u"a1"_s, u"mn_Loeschen"}}) {
                f.select(node);
                f.choose(item);
                const QString told = f.shell.fakePrompt.takeTexts().join(u' ');
                QVERIFY2(told.contains(u"schreibgeschützt"), qPrintable(told));
            }
            f.choose(u"mn_Laden");
            QCOMPARE(f.held(), u"A(a1 a2) B()"_s);
            QVERIFY(!f.isChanged() && f.window->close());
        }
        QVERIFY(QFile::setPermissions(f.path(name), before));
    }

    void cutIndex()
    {
        ArchiveFixture f;
        writeBytes(f.path(u"Book.bkm"_s), f.bytes(u"Book.bkm"_s).left(300));
        f.open();
        QStringList texts;
        QTRY_VERIFY(!(texts += f.shell.fakePrompt.takeTexts()).isEmpty());
        QCOMPARE(texts.size(), 1);
        QVERIFY(texts[0].endsWith(u"'Book.bkm.alt'\n'1.bkm.alt'"_s));
        f.choose(u"mn_Laden"); // says it once
    }

    void unwritableFolder()
    {
        OpenArchive f;
        f.select(u"a1"_s);
        f.choose(u"mn_Loeschen");
        QFile::remove(f.path(u"1.bkm"_s));
        QVERIFY(QDir().mkpath(f.path(u"1.bkm/x"_s)));
        f.choose(u"mn_Speichern");
        QVERIFY(f.shell.fakePrompt.takeTexts().join(u' ').contains(u"'1.bkm' (Ordner 'A')"_s));
        QCOMPARE(f.shown(), u"A(a2) B()"_s); // not read anew: it is only here
        QVERIFY(f.isChanged() && f.window->Buch().colThema()->Item(1)->IsEdit());
        QTest::keyClick(&f.view(), Qt::Key_Z, Qt::ControlModifier);
        QCOMPARE(f.shown(), u"A(a1 a2) B()"_s);
        QVERIFY(f.isChanged()); // the files are not as they were loaded
        f.select(u"A"_s);
        f.shell.fakePrompt.answerYesNo(true);
        f.choose(u"mn_DelOrdner");
        f.shell.fakePrompt.takeTexts();
        QTest::keyClick(&f.view(), Qt::Key_Z, Qt::ControlModifier); // its file cannot be written
        QVERIFY(f.shell.fakePrompt.takeTexts().join(u' ').contains(u"'1.bkm' (Ordner 'A')"_s));
        QCOMPARE(f.shown(), u"A(a1 a2) B()"_s);
        QVERIFY(f.isChanged());
        for (const bool closes : {false, true}) {
            f.shell.fakePrompt.answerYesNo(true);
            f.shell.fakePrompt.onAsk = [closes](QWidget*, const Prompt::Question& question) {
                return Prompt::Answer{closes && question.isRisky};
            };
            QCOMPARE(f.window->close(), closes);
            QCOMPARE(f.shell.fakePrompt.takeTexts().size(), 1);
            QVERIFY(f.shell.fakePrompt.questions.takeFirst().contains(u"'1.bkm' (Ordner 'A')"_s));
        }
    }

    void copiesThatFailAreSaidOnce()
    {
        OpenArchive f;
        writeBytes(f.shell.dataFolder(), "no folder");
        f.select(u"a1"_s);
        for (const int told : {1, 0}) {
            f.choose(u"mn_Loeschen");
            f.choose(u"mn_Speichern");
            QCOMPARE(f.shell.fakePrompt.takeTexts().filter(u"keine Sicherungskopie"_s).size(),
                     told);
            QVERIFY(!f.isChanged());
            f.select(u"a2"_s);
        }
        QCOMPARE(f.shown(), u"A() B()"_s);
    }

    void exports()
    {
        OpenArchive f;
        f.select(u"A"_s);
        FakePrompt& prompt = f.shell.fakePrompt;
        prompt.answerFileName(f.path(u"missing/x"_s));
        f.choose(u"mn_ExpTxt");
        QVERIFY(prompt.takeTexts().value(1).startsWith(u"Meldung|Exclamation|Die Datei "_s));
        const QString name = f.path(u"x #1"_s);
        for (const auto& [item, start] : {std::pair{u"mn_expdetText", "Thema: A\r\n\r\nU"},
                                          {u"mn_expdetHtml", "<HTML><BODY>"},
                                          {u"mn_ExpHtml", "<HTML><TITLE>"},
                                          {u"mn_ExpNetscapeHtml", "<!DOCTYPE NETSCAPE"}}) {
            prompt.answerFileName(name);
            prompt.answerYesNo(true);
            f.choose(item);
            QCOMPARE(prompt.takeTexts().size(), 2);
            QVERIFY(f.bytes(u"x #1"_s).startsWith(start));
            QCOMPARE(std::exchange(f.shell.visited, {}), QStringList{name});
        }
    }

    void imports()
    {
        OpenArchive f;
        BookmarkFile file;
        file.folders = {{-1, u"datei"_s}, {0, u"A"_s}, {1, u"C"_s}};
        file.bookmarks = {{0, u"n0"_s, u"u:0"_s, {}},
                          {1, u"a1"_s, u"http://a1"_s, {}},
                          {1, u"n1"_s, u"u:1"_s, u"i"_s},
                          {2, u"n2"_s, u"u:2"_s, {}}};
        QStringList texts;
        const auto import = [&](const QString& button) {
            QTimer::singleShot(0, f.window, [&] {
                QWidget* const dialog = QApplication::activeModalWidget();
                const auto* const text = dialog->findChild<QLabel*>(u"lblText"_s);
                texts << text->text().section(u'\n', 0, 2);
                dialog->findChild<QAbstractButton*>(u"cmdCopy"_s)->click();
                dialog->findChild<QAbstractButton*>(button)->click();
                texts << text->text().section(u'\n', 0, 1);
                QTest::keyClick(dialog, Qt::Key_Escape);
            });
            f.window->importBookmarks(file);
        };
        import(u"Cancel"_s);
        QCOMPARE(f.shown(), u"A(a1 a2) B()"_s);
        QVERIFY(!f.isChanged());
        import(u"Ok"_s);
        QCOMPARE(f.shown(), u"A(a1 a2) B() datei(n0) A (1)(n1) A – C(n2)"_s);
        QCOMPARE(f.held(), f.shown());
        QCOMPARE(f.view().selectedNode().data().toString(), u"datei"_s);
        QVERIFY(f.isChanged());
        QCOMPARE(texts[2],
                 u"„datei“ enthält 4 Bookmarks in 3 Ordnern.\n1 davon steht schon im Archiv.\n"
                 "3 Bookmarks werden in 3 neue Ordner übernommen."_s);
        QCOMPARE(texts[3], u"3 Bookmarks sind in 3 neue Ordner übernommen.\n"
                           "1 war schon im Archiv."_s);
        QCOMPARE(QGuiApplication::clipboard()->text(),
                 u"Nicht übernommen:\n"
                 "a1 (Ordner „A“): ist schon im Archiv – http://a1"_s);
        import(u"Cancel"_s);
        QVERIFY(
            texts[4].endsWith(u"4 davon stehen schon im Archiv.\nEs gibt nichts zu übernehmen."_s));
    }
};

QTEST_MAIN(ArchiveFilesTest)
#include "ArchiveFilesTest.moc"
