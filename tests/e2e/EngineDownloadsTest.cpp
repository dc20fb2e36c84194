#include "EngineWorld.h"

#include "browser/services/frmDownloads.h"

#include <QApplication>
#include <QDir>
#include <QTableView>
#include <QtTest>

using namespace Qt::StringLiterals;

/// What becomes of files that pages and links hand out.
class EngineDownloadsTest : public QObject {
    Q_OBJECT
private slots:
    void init()
    {
        m_world = std::make_unique<EngineWorld>();
        m_world->server.page(u"/start"_s,
                             "<title>Start</title><a id=a target=_blank href=/file>x</a>");
        offer(u"/file"_s, {.body = QByteArray(5000, 'x')}, "filename=a.bin");
        offer(u"/slow"_s, {.body = QByteArray(90000, 'x'), .sent = 40000}, "filename=slow.bin");
        m_folder = std::make_unique<QTemporaryDir>();
        m_lent = nullptr;
        m_window = m_world->open();
        m_window->makeWindow = [this] { return m_lent = m_world->open(); };
        visit(u"/start"_s);
        QTRY_COMPARE(m_window->visits.size(), 1);
    }
    void cleanup()
    {
        delete m_window;
        delete m_lent;
        m_world->mayEnd();
        m_world->shell.fakePrompt.takeTexts();
        m_world.reset();
    }

    void ends_data()
    {
        using Answer = LoopbackServer::Answer;
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<QByteArray>("disposition");
        QTest::addColumn<QString>("proposed");
        QTest::addColumn<QString>("state");
        const auto row = [](const char* name, const Answer& answer, const QByteArray& disposition,
                            const QString& proposed, const QString& state) {
            QTest::newRow(name) << answer << disposition << proposed << state;
        };
        const Answer whole{.body = "text"};
        const QString done = u"Fertig"_s;
        row("umlauts", whole, "filename*=UTF-8''%C3%9Cbersicht%20%E2%82%AC.txt",
            u"Übersicht €.txt"_s, done);
        row("folders", whole, "filename=\"../../.x/y.txt\"", u"y.txt"_s, done);
        row("device", whole, "filename=con.txt", u"_con.txt"_s, done);
        row("too long", whole, "filename=" + QByteArray(300, 'n') + ".txt",
            QString(242, u'n') + u".txt"_s, done);
        row("length unknown", {.body = "text", .isLengthUnknown = true}, "filename=a.txt",
            u"a.txt"_s, done);
        row("broken off", {.body = QByteArray(90000, 'x'), .sent = 40000, .closes = true},
            "filename=a.bin", u"a.bin"_s, u"Fehler: Die Verbindung ist abgerissen."_s);
    }
    void ends()
    {
        QFETCH(LoopbackServer::Answer, answer);
        QFETCH(QByteArray, disposition);
        QFETCH(QString, proposed);
        QFETCH(QString, state);
        offer(u"/given"_s, answer, disposition);
        save(u"chosen.bin"_s);
        visit(u"/given"_s);
        QTRY_VERIFY(downloadsWindow() != nullptr);
        QTRY_COMPARE(states(), QStringList{state});
        QCOMPARE(m_world->shell.fakePrompt.takeTexts().constFirst().section(u'/', -1), proposed);
        QTRY_COMPARE(files(), state == u"Fertig"_s ? QStringList{u"chosen.bin"_s} : QStringList());
        QVERIFY(m_world->shell.dropSwitch.endsWith(false));
    }

    void refused()
    {
        save({});
        bool isAsked = false;
        m_world->shell.fakePrompt.whileOpen([&] { isAsked = true; });
        visit(u"/file"_s);
        QTRY_VERIFY(isAsked);
        visit(u"/start"_s);
        QTRY_COMPARE(m_window->visits.size(), 2);
        QVERIFY(downloadsWindow() == nullptr && files().isEmpty());
    }

    void folderThatIsNone()
    {
        m_world->shell.fakePrompt.answerFileName(m_folder->filePath(u"none/a.bin"_s));
        save(u"a.bin"_s);
        visit(u"/file"_s);
        QTRY_COMPARE(states(), QStringList{u"Fertig"_s});
        QCOMPARE(files(), QStringList{u"a.bin"_s});
        QCOMPARE(m_world->shell.fakePrompt.takeTexts().size(), 3);
    }

    void outlivesItsWindow()
    {
        save(u"slow.bin"_s);
        visit(u"/slow"_s);
        QTRY_COMPARE(files(), QStringList{u"slow.bin.download"_s});
        delete m_window;
        QTest::qWait(300);
        QCOMPARE(states(), QStringList{u"Wird geladen"_s});
        // The user may keep the program running, and breaks the download off at last.
        m_world->shell.fakePrompt.answerYesNo(false);
        QVERIFY(!m_world->mayEnd());
        QCOMPARE(states(), QStringList{u"Wird geladen"_s});
        m_world->shell.fakePrompt.answerYesNo(true);
        QVERIFY(m_world->mayEnd());
        QTRY_COMPARE(states(), QStringList{u"Abgebrochen"_s});
        QTRY_COMPARE(files(), QStringList());
        QVERIFY(m_world->mayEnd());
    }

    void windowOfTheQuestionCloses()
    {
        const std::unique_ptr<EngineWindow> other(m_world->open());
        other->makeWindow = m_window->makeWindow;
        other->engine().Navigate(m_world->address(u"/start"_s));
        QTRY_COMPARE(other->visits.size(), 1);
        save(u"a.bin"_s);
        m_world->shell.fakePrompt.whileOpen([&] {
            other->run(u"window.open('/start')"_s);
            delete m_window;
            QTest::qWait(300);
        });
        visit(u"/file"_s);
        QTRY_COMPARE(states(), QStringList{u"Fertig"_s});
        QCOMPARE(files(), QStringList{u"a.bin"_s});
        QTRY_VERIFY(m_lent && m_lent->visits.size() == 1); // once there is the answer
    }

    void emptyWindowCloses_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<bool>("closes");
        QTest::newRow("link") << u"document.getElementById('a').click()"_s << true;
        QTest::newRow("opened") << u"window.open('/file')"_s << true;
        QTest::newRow("led on") << u"w = window.open(''); setTimeout(() => w.location = '/file', "
                                   "100)"_s
                                << true;
        QTest::newRow("written") << u"w = window.open(''); w.document.write('<p>Text'); "
                                    "setTimeout(() => w.location = '/file', 1500)"_s
                                 << false;
        QTest::newRow("shown") << u"w = window.open('/start'); "
                                  "setTimeout(() => w.location = '/file', 1500)"_s
                               << false;
    }
    void emptyWindowCloses()
    {
        QFETCH(QString, script);
        QFETCH(bool, closes);
        int closings = 0;
        m_window->makeWindow = [&] {
            m_lent = m_world->open();
            connect(&m_lent->engine(), &EngineControl::WindowClosing, m_lent, [&] { ++closings; });
            return m_lent;
        };
        save(u"a.bin"_s);
        m_window->run(script);
        QTRY_COMPARE(states(), QStringList{u"Fertig"_s});
        QCOMPARE(files(), QStringList{u"a.bin"_s});
        QTest::qWait(200);
        QCOMPARE(closings, closes ? 1 : 0);
    }

    void manyAtOnce_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<int>("count"); // most of one page at once, and of windows by themselves
        QTest::newRow("links") << u"for (let i = 0; i < 20; ++i) { const a = "
                                  "document.createElement('a'); a.href = '/file?' + i; a.download "
                                  "= 'x'; a.click() }"_s
                               << 10;
        QTest::newRow("windows") << u"for (let i = 0; i < 20; ++i) window.open('/file?' + i)"_s
                                 << 8;
    }
    void manyAtOnce()
    {
        QFETCH(QString, script);
        QFETCH(int, count);
        QList<QPointer<EngineWindow>> lent;
        m_window->makeWindow = [&] {
            lent << m_world->open();
            return lent.last();
        };
        QStringList names;
        for (int i = 10; i < 10 + count; ++i) {
            names << QString::number(i);
            save(names.last());
        }
        m_window->run(script);
        QTRY_COMPARE_WITH_TIMEOUT(files(), names, 30000);
        QTRY_COMPARE(states(), QStringList(count, u"Fertig"_s));
        qDeleteAll(lent);
    }

    void manyRefusedAtOnce()
    {
        int closings = 0;
        QList<QPointer<EngineWindow>> lent;
        m_window->makeWindow = [&] {
            lent << m_world->open();
            connect(&lent.last()->engine(), &EngineControl::WindowClosing, lent.last(),
                    [&] { ++closings; });
            return lent.last();
        };
        save({});
        save({});
        m_world->shell.fakePrompt.answerYesNo(true);
        m_window->run(u"for (let i = 0; i < 5; ++i) window.open('/file?' + i)"_s);
        QTRY_COMPARE_WITH_TIMEOUT(closings, 5, 15000);
        QCOMPARE(m_world->shell.fakePrompt.takeTexts().value(2),
                 u"Downloads|Question|Es kommen noch mehr Downloads. Alle ablehnen?"_s);
        QVERIFY(files().isEmpty());
        qDeleteAll(lent);
    }

private:
    void offer(const QString& path, LoopbackServer::Answer answer, const QByteArray& disposition)
    {
        answer.type = "application/octet-stream";
        answer.headers = "Content-Disposition: attachment; " + disposition + "\r\n";
        m_world->server.answer(path, answer);
    }
    void visit(const QString& path) { m_window->engine().Navigate(m_world->address(path)); }
    /// Has the next save dialog end with this name in the test's folder, or none.
    void save(const QString& name)
    {
        m_world->shell.fakePrompt.answerFileName(name.isEmpty() ? name : m_folder->filePath(name));
    }
    QStringList files() const
    {
        return QDir(m_folder->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot);
    }
    static frmDownloads* downloadsWindow()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows) {
            if (auto* const found = qobject_cast<frmDownloads*>(window)) {
                return found;
            }
        }
        return nullptr;
    }
    static QStringList states()
    {
        QStringList all;
        if (const frmDownloads* const window = downloadsWindow()) {
            const auto& table = *window->findChild<QTableView*>()->model();
            for (int row = 0; row < table.rowCount(); ++row) {
                all << table.index(row, DownloadTable::State).data().toString();
            }
        }
        return all;
    }

    std::unique_ptr<EngineWorld> m_world;
    std::unique_ptr<QTemporaryDir> m_folder;
    QPointer<EngineWindow> m_window;
    QPointer<EngineWindow> m_lent;
};

ENGINE_TEST_MAIN(EngineDownloadsTest)
#include "EngineDownloadsTest.moc"
