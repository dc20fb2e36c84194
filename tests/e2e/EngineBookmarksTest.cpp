#include "EngineWorld.h"

#include "pages/viewing/BookmarkBar.h"
#include "tests/Files.h"

#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>

#include <csignal>

using namespace Qt::StringLiterals;

namespace {
/// The file as "name: folder/folder(title|address|description)...".
QString shown(const BookmarkFile& file)
{
    QString text = file.folders.front().name + u':';
    int last = -1;
    for (const BookmarkFile::Entry& entry : file.bookmarks) {
        if (entry.folder != last) {
            QString path;
            for (int i = entry.folder; i > 0; i = file.folders[std::size_t(i)].parent)
                path.prepend(u'/' + file.folders[std::size_t(i)].name);
            text += u"\n["_s + path + u']';
        }
        last = entry.folder;
        text += u"\n"_s + entry.titel + u'|' + entry.url + u'|' + entry.info;
    }
    return text.replace(u"\r\n"_s, u"//"_s);
}

QByteArray link(int number)
{
    return "<DT><A HREF=\"http://h/" + QByteArray::number(number) + "\">Titel</A>\n";
}

const QByteArray head = "<!DOCTYPE NETSCAPE-Bookmark-file-1>\n";
} // namespace

/// Pages that are bookmark files, as the engine parses them, with the bar over them.
class EngineBookmarksTest : public EngineTest {
    Q_OBJECT
private slots:
    void init()
    {
        EngineTest::init();
        m_world.shell.imported.clear();
    }

    void readsFiles_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("links");
        QTest::addColumn<QString>("read");
        QTest::newRow("nested") << u"bookmarks/nested.html"_s << 6 << uR"(x:
[]
Neueste|place:type=6&sort=14|
Gärtnern für „Anfänger“ <neu> – 5 €|https://garten.example/?beet=1&art=%C3%BC|Erste Zeile mit & und <b>//Zweite Zeile
[/Leiste]
Wetter|https://wetter.example/|
[/Leiste/Reisen]
Bahn|https://bahn.example/|
Kleines Skript|javascript:alert(1)|
[/Leiste]
Fähre|https://fähre.example/日本|)"_s;
        QTest::newRow("plain") << u"bookmarks/plain.html"_s << 4 << uR"(x:
[/Küche]
Brot|http://brot.example/|mit Körnern, siehe Mehl//und Salz
Suppe|http://suppe.example/|
[]
|http://danach.example/|)"_s;
        QTest::newRow("our own") << u"../core/golden/archive-netscape.htm"_s << 4 << QString();
    }
    void readsFiles()
    {
        QFETCH(QString, file);
        QFETCH(int, links);
        QFETCH(QString, read);
        m_world.server.answer(u"/x.html"_s,
                              {.body = bytesOf(QFINDTESTDATA(file)), .type = "text/html"});
        m_window->visitAndWait(u"/x.html"_s);
        const BookmarkFile taken = take(links);
        if (read.isEmpty()) {
            QCOMPARE(taken.folders[1].name, u"Ämter"_s); // "<Süd>" is none of ours
            QCOMPARE(taken.bookmarks.front().info, u"Preis: 5 €\r\nzweite Zeile"_s);
        } else {
            QCOMPARE(shown(taken), read);
        }
        QVERIFY(taken.isWhole);
    }

    void otherPagesOfferNothing()
    {
        visit("<a href=/x>x</a>");
        visitFile("nichts");
        QTest::qWait(300);
        QVERIFY(bar() == nullptr);
        visitFile(link(1));
        QTRY_VERIFY(bar() != nullptr && bar()->isVisible());
        const auto* const theBar = bar();
        QCOMPARE(button(u"cmdTake"_s)->text(), u"Dieses Bookmark ins Archiv übernehmen"_s);
        // What the user has closed stays closed for this document.
        bar()->findChild<QToolButton*>(u"cmdClose"_s)->click();
        QVERIFY(!theBar->isVisible());
        m_window->engine().Refresh();
        QVERIFY(comesToHold([theBar] { return theBar->isVisible(); }));
        visit("<a href=/x>x</a>");
        QVERIFY(comesToHold([&] { return !theBar->isVisible(); }));
    }

    // Names that hide properties of the document, lists within lists, megabytes, and scripts
    // that turn the document round meanwhile.
    void hostileFilesDoNoHarm_data()
    {
        QTest::addColumn<QByteArray>("html");
        const auto row = [](const char* name, const QByteArray& html) {
            QTest::newRow(name) << html + link(1);
        };
        row("names", "<form name=doctype><input name=firstChild><input name=nextSibling>"
                     "<input name=nodeType><input name=parentNode><input name=localName></form>"
                     "<img name=links><img name=readyState><object id=globalThis></object>");
        row("lists", QByteArray("<DL><H3>x</H3>").repeated(5000) +
                         "<script>let last = document.createElement('p'); last.hidden = true;"
                         "document.body.append(last); for (let i = 0; i < 100000; ++i) {"
                         "const next = document.createElement('dl');"
                         "last.append(next); last = next; }</script>");
        row("texts", "<DT><H3>" + QByteArray(3'000'000, 'x') + "</H3><DL><DT><A HREF=\"" +
                         QByteArray(3'000'000, 'y') + "\">" + QByteArray(3'000'000, 'z') +
                         "</A><DD>" + QByteArray("<b>").repeated(500'000));
        row("scripts", "<script>const f = () => { const a = document.createElement('a');"
                       "a.href = 'http://more/'; document.body.append(a); };"
                       "setInterval(() => { for (let i = 0; i < 50; ++i) f(); }, 1);"
                       "Object.getOwnPropertyDescriptor = JSON.stringify = Date.now = 0;"
                       "</script>");
    }
    void hostileFilesDoNoHarm()
    {
        QFETCH(QByteArray, html);
        m_world.server.page(u"/x.html"_s, head + html);
        m_window->visit(u"/x.html"_s);
        QTRY_VERIFY_WITH_TIMEOUT(bar() != nullptr && bar()->isVisible(), 30000);
        button(u"cmdTake"_s)->click();
        const auto isRead = [this] { return !m_world.shell.imported.empty(); };
        if (!QTest::qWaitFor(isRead, 8000)) // it grows as fast as it is read
            button(u"cmdStop"_s)->click();
        QVERIFY(button(u"cmdTake"_s)->isVisible());
        for (const BookmarkFile& file : m_world.shell.imported)
            for (const BookmarkFile::Entry& entry : file.bookmarks)
                QVERIFY(entry.titel.size() + entry.url.size() + entry.info.size() < 5000);
        m_window->visitAndWait(page("y"));
    }

    void stops()
    {
        visitFile(manyLinks());
        QTRY_VERIFY(bar() != nullptr && bar()->isVisible());
        QCOMPARE(button(u"cmdTake"_s)->text(), u"Diese 30.000 Bookmarks ins Archiv übernehmen"_s);
        button(u"cmdTake"_s)->setFocus();
        QTest::keyClick(button(u"cmdTake"_s), Qt::Key_Return);
        const auto* const progress = bar()->findChild<QProgressBar*>();
        QTRY_VERIFY(progress->isVisible() && progress->value() > 0);
        QVERIFY(button(u"cmdStop"_s)->hasFocus());
        QTest::keyClick(button(u"cmdStop"_s), Qt::Key_Escape);
        QVERIFY(button(u"cmdTake"_s)->hasFocus());
        QTest::qWait(300);
        QVERIFY(m_world.shell.imported.empty());
        QCOMPARE(take(30000).bookmarks.size(), 30000U);
    }

    void endsWithItsPage()
    {
        const auto isReading = [this] { return button(u"cmdStop"_s)->isVisible(); };
        for (const bool crashes : {true, false}) {
            visitFile(manyLinks());
            QTRY_VERIFY(bar() != nullptr && bar()->isVisible());
            button(u"cmdTake"_s)->click();
            QVERIFY(isReading());
            if (crashes) {
                ::kill(pid_t(m_window->view()->page()->renderProcessPid()), SIGKILL);
                QTRY_VERIFY(!bar()->isVisible());
            }
        }
        delete m_window;
        QTest::qWait(500);
        QVERIFY(m_world.shell.imported.empty());
    }

private:
    static QByteArray manyLinks()
    {
        QByteArray html;
        for (int i = 0; i < 30000; ++i)
            html += link(i);
        return html;
    }
    void visitFile(const QByteArray& html)
    {
        m_world.server.page(u"/x.html"_s, head + html);
        m_window->visitAndWait(u"/x.html"_s);
    }
    BookmarkBar* bar() const { return m_window->findChild<BookmarkBar*>(); }
    QPushButton* button(const QString& name) const { return bar()->findChild<QPushButton*>(name); }
    /// What comes of the offer of so many bookmarks.
    BookmarkFile take(int links)
    {
        [this, links] {
            QTRY_VERIFY(bar() != nullptr && bar()->isVisible());
            QVERIFY(button(u"cmdTake"_s)->text().contains(QLocale().toString(links)));
            button(u"cmdTake"_s)->click();
            QTRY_VERIFY(!m_world.shell.imported.empty());
        }();
        return m_world.shell.imported.empty() ? BookmarkFile{{{}}, {}, false}
                                              : m_world.shell.imported.back();
    }
};

QTEST_MAIN(EngineBookmarksTest)
#include "EngineBookmarksTest.moc"
