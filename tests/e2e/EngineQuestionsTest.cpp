#include "EngineWorld.h"

#include <QDesktopServices>
#include <QtTest>

#include <csignal>

using namespace Qt::StringLiterals;

/// What pages ask their user, and what comes of each answer.
class EngineQuestionsTest : public EngineTest {
    Q_OBJECT
public slots:
    void openOnDesktop(const QUrl& url) { m_opened << url; }

private slots:
    void scripts()
    {
        m_world.prompt.onAsk = [](QWidget*, const Prompt::Question& question) {
            return Prompt::Answer{.isAccepted = true,
                                  .input = question.input.value_or(QString()) + u'!'};
        };
        load(m_window, "<script>alert('a\\u202Eb'); document.title = confirm('c') + "
                       "prompt('d', 'vor')</script>");
        QTRY_COMPARE(m_window->engine().LocationName(), u"truevor!"_s);
        const QString site = m_world.server.address({}) + u" meldet:\n\n"_s;
        QCOMPARE(m_world.prompt.questions, QStringList({site + u"ab"_s, site + u'c', site + u'd'}));
    }

    void silenced()
    {
        m_world.prompt.onAsk = [](QWidget*, const Prompt::Question& question) {
            return Prompt::Answer{.isChecked = !question.checkBox.isEmpty()};
        };
        load(m_window, "<script>for (i = 0; i < 200; ++i) alert(i);"
                       "history.pushState(0, '', '/elsewhere'); alert('more');"
                       "location.hash = 'part'; alert('more')</script>"
                       "<title>Ruhe</title>");
        QTRY_COMPARE(m_window->engine().LocationName(), u"Ruhe"_s);
        QCOMPARE(m_world.prompt.questions.size(), 2);
        load(m_window, "<script>alert('again')</script>");
        QTRY_COMPARE(m_world.prompt.questions.size(), 3);
    }

    void windowGoes()
    {
        m_world.prompt.onAsk = [this](QWidget*, const Prompt::Question&) {
            delete m_window;
            QTest::qWait(50);
            return Prompt::Answer{.isAccepted = true};
        };
        load(m_window, "<script>alert(1)</script>");
        QTRY_VERIFY(!m_window);
        m_window = m_world.open();
        load(m_window, "<script>navigator.geolocation.getCurrentPosition(() => {})</script>");
        QTRY_VERIFY(!m_window);
        m_window = m_world.open();
        visit("<title>Frei</title>"); // the others live on
        QCOMPARE(m_window->engine().LocationName(), u"Frei"_s);
    }

    void hungPage()
    {
        visit("<title>Hängt</title>");
        m_window->run(u"for (;;) {}"_s);
        QTest::qWait(200);
        QVERIFY(m_window->engine().AskToClose());
        QTRY_COMPARE(m_world.closings, 1);
        ::kill(static_cast<pid_t>(m_window->view()->page()->renderProcessPid()), SIGKILL);
    }

    // Only a click leads to the desktop, and never to addresses of the program's own.
    void desktopLinks()
    {
        m_world.prompt.onAsk = [](auto&&...) { return Prompt::Answer{.isAccepted = true}; };
        for (const QString& address :
             {u"mailto:x@y"_s, u"tessera-error:address=x"_s, u"qrc:/x.html"_s}) {
            const QString scheme = address.section(u':', 0, 0);
            QDesktopServices::setUrlHandler(scheme, this, "openOnDesktop");
            const QByteArray quoted = '"' + address.toLatin1() + '"';
            const QByteArray link = "<a style='display:block;height:900px' href=" + quoted;
            for (const QByteArray& way :
                 {link + " >x</a>", link + " target=_blank>x</a>",
                  "<script>location=" + quoted + "</script>",
                  "<a id=a href=" + quoted + "></a><script>a.click()</script>",
                  "<iframe src=" + quoted + "></iframe>"}) {
                const bool isOpened = scheme == u"mailto"_s && way.startsWith(link);
                const QString title = u"Bleibt %1"_s.arg(++m_titles);
                m_opened.clear();
                m_world.prompt.questions.clear();
                m_window->visit(page("<title>" + title.toLatin1() + "</title>" + way));
                QTRY_COMPARE(m_window->engine().LocationName(), title);
                click(m_window);
                QTest::qWait(300);
                QTRY_COMPARE(m_opened, QList<QUrl>(isOpened ? 1 : 0, QUrl(address)));
                QCOMPARE(m_world.prompt.questions.size(), m_opened.size());
                QCOMPARE(m_window->engine().LocationName(), title);
            }
            QDesktopServices::unsetUrlHandler(scheme);
        }
    }

    void manyWindows()
    {
        int opened = 0;
        QString status;
        m_window->makeWindow = [&] {
            ++opened;
            EngineWindow* const window = m_world.open();
            for (EngineWindow* const its : {m_window.get(), window})
                connect(&its->engine(), &EngineControl::StatusTextChange, this,
                        [&](const QString& text) { status = text; });
            return window;
        };
        load(m_window, "<script>for (i = 0; i < 50; ++i) open('/plain')</script>"
                       "<script>onclick = () => open('/plain')</script>");
        QTRY_VERIFY(opened > 0);
        QTRY_COMPARE(m_window->visits.size(), 1);
        QCOMPARE(opened, 8);
        QTest::qWait(1000); // the others load
        QCOMPARE(status, u"Ein weiteres Fenster dieser Seite wurde nicht geöffnet."_s);
        m_window->raise();
        click(m_window);
        QTRY_COMPARE(opened, 9);
    }

private:
    void load(EngineWindow* window, const QByteArray& html) { window->visit(page(html)); }

    QList<QUrl> m_opened;
    int m_titles = 0;
};

QTEST_MAIN(EngineQuestionsTest)
#include "EngineQuestionsTest.moc"
