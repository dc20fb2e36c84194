#include "EngineWorld.h"

#include "pages/downloads/DownloadTable.h"
#include "tests/Files.h"

#include <QDir>
#include <QStorageInfo>
#include <QTableView>
#include <QtTest>

using namespace Qt::StringLiterals;

/// What becomes of files that pages and links hand out.
class EngineDownloadsTest : public QObject {
    Q_OBJECT
public:
    static void initMain() { EngineTest::initMain(); }

private slots:
    void init()
    {
        m_world = std::make_unique<EngineWorld>();
        m_world->server.page(u"/start"_s,
                             "<title>Start</title><a id=a target=_blank href=/file>x</a>");
        offer(u"/file"_s, {.body = QByteArray(5000, 'x')}, "filename=a.bin");
        offer(u"/slow"_s, {.body = QByteArray(90000, 'x'), .sent = 40000}, "filename=slow.bin");
        offer(u"/partial"_s, {.body = QByteArray(90000, 'x'), .sent = 40000, .waits = true},
              "filename=slow.bin");
        m_folder = std::make_unique<QTemporaryDir>();
        m_window = m_world->open(u"/start"_s);
        m_window->makeWindow = [this] { return m_world->open(); };
    }
    void cleanup()
    {
        m_world->closeWindows();
        QTRY_COMPARE(waiting(), QStringList());
        m_world->mayEnd();
        m_world->shell.fakePrompt.takeTexts();
        m_world.reset();
    }

    void ends()
    {
        const auto check = [this](const LoopbackServer::Answer& answer,
                                  const QByteArray& disposition, const QString& proposed,
                                  const QString& state = u"Fertig"_s) {
            const qsizetype before = states().size();
            offer(u"/given"_s, answer, disposition);
            save(u"chosen.bin"_s);
            m_window->visit(u"/given"_s);
            QTRY_COMPARE(states().mid(before), QStringList{state});
            QCOMPARE(m_world->shell.fakePrompt.takeTexts().constFirst().section(u'/', -1),
                     proposed);
            QTRY_COMPARE(!files().isEmpty(), state == u"Fertig"_s);
            QFile::remove(m_folder->filePath(u"chosen.bin"_s));
            QVERIFY(m_world->shell.dropSwitch.endsWith(false));
        };
        const LoopbackServer::Answer whole{.body = "text"};
        check(whole, "filename*=UTF-8''%C3%9Cbersicht%20%E2%82%AC.txt", u"Übersicht €.txt"_s);
        check(whole, "filename=\"../../.x/y.txt\"", u"y.txt"_s);
        check({.body = QByteArray(90000, 'x'), .sent = 40000, .closes = true}, "filename=a.bin",
              u"a.bin"_s, u"Fehler: Die Verbindung ist abgerissen."_s);
    }

    void outlivesItsWindow()
    {
        save(u"slow.bin"_s);
        m_window->visit(u"/slow"_s);
        QTRY_COMPARE(states(), QStringList{u"Wird geladen"_s});
        delete m_window;
        QTest::qWait(300);
        QCOMPARE(states(), QStringList{u"Wird geladen"_s});
        // The user may keep the program running, and breaks the download off at last.
        QVERIFY(!m_world->mayEnd());
        QCOMPARE(states(), QStringList{u"Wird geladen"_s});
        breakOff();
        QTRY_COMPARE(states(), QStringList{u"Abgebrochen"_s});
        QTRY_COMPARE(files(), QStringList());
        QVERIFY(m_world->mayEnd());
    }

    void othersGoOnWhileOneAsks()
    {
        EngineWindow* const other = m_world->open(u"/start"_s);
        save(u"slow.bin"_s); // and never ends
        other->visit(u"/slow"_s);
        QTRY_COMPARE(states(), QStringList{u"Wird geladen"_s});
        save(u"a.bin"_s);
        m_world->shell.fakePrompt.whileOpen([&] {
            QTRY_COMPARE(waiting(), QStringList({u"slow.bin.teil.download"_s, u"a.bin.teil"_s}));
            QCOMPARE(states().last(), u"Wartet auf den Speicherort"_s);
            m_window->visit(u"/start"_s);
            QTRY_COMPARE(m_window->visits.size(), 2);
        });
        m_window->visit(u"/file"_s);
        QTRY_COMPARE(states().last(), u"Fertig"_s);
        QCOMPARE(files(), QStringList{u"a.bin"_s});
        breakOff();
    }

    void placesAreTakenSince()
    {
        save(u"slow.bin"_s);
        m_window->visit(u"/partial"_s);
        QTRY_COMPARE(states(), QStringList{u"Wird geladen"_s});
        writeBytes(m_folder->filePath(u"slow.bin"_s), "other");
        m_world->server.goOn();
        QTRY_COMPARE(states(), QStringList{u"Fertig"_s});
        QCOMPARE(files(), QStringList({u"slow (2).bin"_s, u"slow.bin"_s}));
    }

    void otherFileSystem()
    {
        const QTemporaryDir far(u"/dev/shm/tessera-XXXXXX"_s);
        if (QStorageInfo(far.path()).device() == QStorageInfo(m_folder->path()).device())
            QSKIP("There is only one file system.");
        m_world->shell.fakePrompt.answerFileName(far.filePath(u"a.bin"_s));
        m_window->visit(u"/file"_s);
        QTRY_COMPARE(states(), QStringList{u"Fertig"_s});
        QCOMPARE(QDir(far.path()).entryList(QDir::Files), QStringList{u"a.bin"_s});
        QCOMPARE(bytesOf(far.filePath(u"a.bin"_s)), QByteArray(5000, 'x'));
    }

    void windowOfTheQuestionCloses()
    {
        save(u"a.bin"_s);
        m_world->shell.fakePrompt.whileOpen([&] {
            delete m_window;
            QTest::qWait(300);
        });
        m_window->visit(u"/file"_s);
        QTRY_COMPARE(states(), QStringList{u"Fertig"_s});
        QCOMPARE(files(), QStringList{u"a.bin"_s});
    }

    void emptyWindowCloses()
    {
        QStringList names;
        const auto check = [&](const QString& script, bool closes) {
            names << QString::number(names.size());
            save(names.last());
            const int before = m_world->closings;
            m_window->run(script);
            QTRY_COMPARE(states(), QStringList(names.size(), u"Fertig"_s));
            QCOMPARE(files(), names);
            QTest::qWait(200);
            QCOMPARE(m_world->closings - before, closes ? 1 : 0);
        };
        check(u"document.getElementById('a').click()"_s, true);
        check(u"window.open('/file')"_s, true);
        check(u"w = window.open(''); setTimeout(() => w.location = '/file', 100)"_s, true);
        check(u"w = window.open('/start'); setTimeout(() => w.location = '/file', 1500)"_s, false);
    }

    void refusalsCountUntilTheUserGoesOn()
    {
        const auto offerOnce = [this] {
            m_window->run(u"location = '/file'"_s);
            QStringList texts;
            (void)QTest::qWaitFor(
                [&] { return !(texts = m_world->shell.fakePrompt.takeTexts()).isEmpty(); });
            return texts.join(u'\n');
        };
        const QString question = u"Es kommen noch mehr Downloads. Alle ablehnen?"_s;
        for (int i = 0; i < 2; ++i) {
            save({});
            QVERIFY(offerOnce().startsWith(u"Datei speichern unter"_s));
            QTest::qWait(3300); // longer than a refusal counted once
        }
        m_world->shell.fakePrompt.answerYesNo(true);
        QVERIFY(offerOnce().endsWith(question));
        QCOMPARE(offerOnce(), QString()); // unasked
        m_window->visitAndWait(u"/start"_s);
        save({});
        QVERIFY(offerOnce().startsWith(u"Datei speichern unter"_s));
        QVERIFY(states().isEmpty());
    }

private:
    void offer(const QString& path, LoopbackServer::Answer answer, const QByteArray& disposition)
    {
        answer.type = "application/octet-stream";
        answer.headers = "Content-Disposition: attachment; " + disposition + "\r\n";
        m_world->server.answer(path, answer);
    }
    /// Has the next save dialog end with this name in the test's folder, or none.
    void save(const QString& name)
    {
        m_world->shell.fakePrompt.answerFileName(name.isEmpty() ? name : m_folder->filePath(name));
    }
    /// Has the program end though downloads run; the safe answer is the default one.
    void breakOff()
    {
        m_world->shell.fakePrompt.onAsk = [](QWidget*, const Prompt::Question& question) {
            return Prompt::Answer{.isAccepted = question.isRisky};
        };
        QVERIFY(m_world->mayEnd());
    }
    QStringList files() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    /// What waits for its place, or should not any more.
    QStringList waiting() const { return (QDir::home().entryList() + files()).filter(u".teil"_s); }
    QStringList states() const
    {
        QStringList all;
        if (const auto* const list = m_world->frame.findChild<QTableView*>(u"lstDownloads"_s))
            for (int row = 0; row < list->model()->rowCount(); ++row)
                all << list->model()->index(row, DownloadTable::State).data().toString();
        return all;
    }

    std::unique_ptr<EngineWorld> m_world;
    std::unique_ptr<QTemporaryDir> m_folder;
    QPointer<EngineWindow> m_window;
};

QTEST_MAIN(EngineDownloadsTest)
#include "EngineDownloadsTest.moc"
