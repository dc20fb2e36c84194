#include "EngineWorld.h"

#include "pages/downloads/DownloadTable.h"
#include "tests/Files.h"

#include <QDialog>
#include <QDir>
#include <QPushButton>
#include <QRegularExpression>
#include <QStorageInfo>
#include <QTableView>
#include <QToolButton>
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
        m_world->cancelDownloads();
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

    void takenUpAgain_data()
    {
        QTest::addColumn<QByteArray>("etag");
        QTest::addColumn<QByteArray>("etagLater");
        QTest::addColumn<bool>("closesWindow");
        QTest::addColumn<QString>("range"); // that is asked for last
        QTest::newRow("continued") << "\"1\""_ba
                                   << "\"1\""_ba << false << u"40000"_s;
        QTest::newRow("no parts") << ""_ba
                                  << ""_ba << false << QString();
        QTest::newRow("changed") << "\"1\""_ba
                                 << "\"2\""_ba << false << u"40000"_s;
        QTest::newRow("window gone") << "\"1\""_ba
                                     << "\"1\""_ba << true << QString();
        QTest::newRow("gone from the server") << ""_ba
                                              << "404"_ba << false << QString();
    }
    void takenUpAgain()
    {
        QFETCH(const QByteArray, etag);
        QFETCH(const QByteArray, etagLater);
        QFETCH(const QString, range);
        QFETCH(const bool, closesWindow);
        offer(u"/broken"_s,
              {.body = QByteArray(90000, 'x'), .sent = 40000, .etag = etag, .closes = true},
              "filename=a.bin");
        const QString place = m_folder->filePath(u"mine.bin"_s);
        save(u"mine.bin"_s);
        m_window->visit(u"/broken"_s);
        const QString failed = u"Fehler: Die Verbindung ist abgerissen."_s;
        QTRY_COMPARE(states(), QStringList{failed});
        QVERIFY(!QFile::exists(place) && isEnabled("cmdReload"));
        if (closesWindow) {
            delete m_window;
            QTest::qWait(300);
        }
        if (etagLater == "404") {
            m_world->server.answer(u"/broken"_s, {.body = "weg", .status = 404});
            press("cmdReload");
            QTRY_COMPARE(states(),
                         QStringList{u"Fehler: Auf dem Server gibt es die Datei nicht."_s});
            QVERIFY(isEnabled("cmdReload")); // it may be back
        }
        writeBytes(place, "Somebody else's.");
        const char filling = etag == etagLater ? 'x' : 'y';
        offer(u"/broken"_s, {.body = QByteArray(90000, filling), .etag = etagLater},
              "filename=other.bin");
        press("cmdReload");
        QTRY_COMPARE(states(), QStringList{u"Fertig"_s});
        QCOMPARE(bytesOf(place), "Somebody else's."_ba);
        QCOMPARE(bytesOf(m_folder->filePath(u"mine (2).bin"_s)), QByteArray(90000, filling));
        QCOMPARE(rangeOf(u"/broken"_s), range);
        QVERIFY(!isEnabled("cmdReload"));
    }

    /// Neither by the engine nor by the program: nobody knows what it would set going.
    void formIsNotSentAgain()
    {
        m_world->server.page(u"/form"_s,
                             "<title>F</title><form method=post action=/broken></form>");
        offer(u"/broken"_s, {.body = QByteArray(90000, 'x'), .sent = 40000, .closes = true},
              "filename=a.bin");
        m_window->visitAndWait(u"/form"_s);
        save(u"a.bin"_s);
        m_window->run(u"document.forms[0].submit()"_s);
        QTRY_COMPARE(states(), QStringList{u"Fehler: Die Verbindung ist abgerissen. Das Formular "
                                           "wird nicht noch einmal gesendet."_s});
        QVERIFY(!isEnabled("cmdReload"));
        QTRY_COMPARE(waiting() + files(), QStringList());
    }

    void cancelledIsLoadedAgain()
    {
        save(u"slow.bin"_s);
        m_window->visit(u"/slow"_s);
        QTRY_COMPARE(states(), QStringList{u"Wird geladen"_s});
        press("cmdCancel");
        QTRY_COMPARE(states(), QStringList{u"Abgebrochen"_s});
        QTRY_COMPARE(waiting(), QStringList());
        offer(u"/slow"_s, {.body = QByteArray(90000, 'x')}, "filename=slow.bin");
        press("cmdReload");
        QTRY_COMPARE(states(), QStringList{u"Fertig"_s});
        QCOMPARE(files(), QStringList{u"slow.bin"_s});
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

    /// The engine tries again, but would do nothing with the answer.
    void breaksOffWithoutItsWindow()
    {
        save(u"slow.bin"_s);
        m_window->visit(u"/partial"_s);
        QTRY_COMPARE(summary(), u"1 Download, 44 %"_s);
        delete m_window;
        QTest::qWait(300);
        offer(u"/partial"_s, {.body = QByteArray(90000, 'x')}, "filename=slow.bin");
        m_world->server.breakOff();
        QTRY_COMPARE(states(), QStringList{u"Fertig"_s});
        QCOMPARE(bytesOf(m_folder->filePath(u"slow.bin"_s)), QByteArray(90000, 'x'));
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
        QVERIFY(states().contains(u"Wird geladen"_s)); // something else may keep the program
        m_world->cancelDownloads();
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

    QPushButton* button(const char* name) const
    {
        const auto* const window = m_world->frame.findChild<QDialog*>(u"frmDownloads"_s);
        return window->findChild<QPushButton*>(QLatin1String(name));
    }
    bool isEnabled(const char* name) const { return button(name)->isEnabled(); }
    void press(const char* name) const
    {
        QTRY_VERIFY(isEnabled(name));
        button(name)->click();
    }
    /// What stands in the status bar.
    QString summary() const
    {
        const auto* const sign = qobject_cast<QToolButton*>(m_world->shell.statusSign);
        return sign->isHidden() ? QString() : sign->text();
    }
    /// Where the part begins that the last request asked for.
    QString rangeOf(const QString& path) const
    {
        static const QRegularExpression pattern(u"Range: bytes=(\\d+)-"_s);
        return pattern.match(QString::fromLatin1(m_world->server.lastRequest(path))).captured(1);
    }

    std::unique_ptr<EngineWorld> m_world;
    std::unique_ptr<QTemporaryDir> m_folder;
    QPointer<EngineWindow> m_window;
};

QTEST_MAIN(EngineDownloadsTest)
#include "EngineDownloadsTest.moc"
