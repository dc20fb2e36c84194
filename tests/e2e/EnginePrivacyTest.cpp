#include "EngineWorld.h"

#include <QTableView>
#include <QWebEngineProfile>
#include <QtTest>

using namespace Qt::StringLiterals;

/// What private windows share with others, and how long they do.
class EnginePrivacyTest : public EngineTest {
    Q_OBJECT
private slots:
    /// What is said and kept in one window must not be known in the next.
    void eachBeginsWithNothing()
    {
        LoopbackServer safe;
        safe.useTls(QFINDTESTDATA("localhost.pem"));
        safe.page(u"/safe"_s, "<title>Sicher</title>");
        m_world.server.answer(u"/locked"_s, {.body = "<title>Drin</title>", .logIn = "ich:geheim"});
        const QString asking = page("<script>Notification.requestPermission()"
                                    ".then(answer => { document.title = answer })</script>");
        m_world.prompt.onLogIn = [] { return Prompt::LogIn{u"ich"_s, u"geheim"_s}; };
        m_world.prompt.onAsk = [](QWidget*, const Prompt::Question&) {
            return Prompt::Answer{.isAccepted = true};
        };
        const auto shows = [&](EngineWindow* window, const QString& address, const QString& title) {
            window->engine().Navigate(address);
            QTRY_COMPARE(window->engine().LocationName(), title);
        };
        QPointer<EngineWindow> window = m_window;
        for (int turn = 1; turn <= 3; ++turn) {
            shows(window, m_world.server.address(u"/locked"_s), u"Drin"_s);
            shows(window, safe.address(u"/safe"_s), u"Sicher"_s);
            shows(window, m_world.server.address(asking), u"granted"_s);
            QCOMPARE(m_world.prompt.questions.size(), 3 * turn);
            const QPointer<QWebEngineProfile> profile = profileOf(window);
            if (profile->isOffTheRecord())
                delete window;
            QTRY_COMPARE(profile.isNull(), window.isNull());
            window = m_world.openPrivately();
        }
    }

    void itEndsWithItsWindowsAndDownloads()
    {
        m_world.server.answer(u"/file"_s, {.body = QByteArray(90000, 'x'),
                                           .type = "application/octet-stream",
                                           .headers = "Content-Disposition: attachment\r\n",
                                           .sent = 40000,
                                           .waits = true});
        EngineWindow* const first = m_world.openPrivately(page("<title>Privat</title>"));
        EngineWindow* const second = m_world.openPrivately();
        const QPointer<QWebEngineProfile> profile = profileOf(first);
        QCOMPARE(profileOf(second), profile.get());
        delete second;
        const QTemporaryDir folder;
        m_world.prompt.answerFileName(folder.filePath(u"datei"_s));
        first->visit(u"/file"_s);
        const auto list = [this] { return m_world.frame.findChild<QTableView*>(); };
        QTRY_VERIFY(list() != nullptr && list()->model()->rowCount() == 1);
        QCOMPARE(list()->window()->windowTitle(), u"Downloads (privat)"_s);
        delete first;
        QVERIFY(profileOf(m_world.openPrivately()) != profile);
        QTest::qWait(500);
        QVERIFY(list() != nullptr && profile);
        m_world.server.goOn();
        QTRY_VERIFY(QFile::exists(folder.filePath(u"datei"_s)));
        QTest::qWait(500);
        QVERIFY(list() != nullptr); // it says that the file is there
        list()->window()->close();
        QTRY_VERIFY(profile.isNull());
        m_world.prompt.takeTexts();
    }

private:
    static QWebEngineProfile* profileOf(const EngineWindow* window)
    {
        return window->view()->page()->profile();
    }
};

QTEST_MAIN(EnginePrivacyTest)
#include "EnginePrivacyTest.moc"
