#include "bookmarks/Book.h"
#include "bookmarks/ImportPlan.h"
#include "pages/viewing/BookmarkPage.h"
#include "tests/core/SampleArchive.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {
/// What comes of a page's events in an archive with the folders "A" and "A (1)" and the
/// bookmark "Wetter", as "A (2)(title|address|description)"; behind it, why others stay out.
QString imported(const QString& events, int room = 10)
{
    BookmarkPageReader reader(QUrl(u"file:///d/Meine%20Datei.html"_s));
    if (reader.take(u"[true,true"_s + events + u']') != BookmarkPageReader::Progress::Done)
        return u"refused"_s;
    Book book({});
    qint16 number = 0;
    for (const QString& name : {u"A"_s, u"A (1)"_s}) {
        const auto bookmarks = std::make_shared<BookmarkCollection>();
        bookmarks->Add(makeBookmark(1, u"Wetter"_s, u"http://"_s + QString::number(number), {}));
        addThema(book, {}, ++number, name)->colBookmark(bookmarks);
    }
    ArchiveContents archive = ArchiveContents::of(book);
    archive.room = room;
    const ImportPlan plan = ImportPlan::of(reader.takeFile(), archive);
    QString shown;
    for (const ImportPlan::Folder& folder : plan.folders) {
        shown += folder.name + u'(';
        for (const BookmarkTexts& entry : folder.bookmarks)
            shown += entry.titel + u'|' + entry.url + u'|' + entry.info + u' ';
        shown = shown.trimmed() + u')';
    }
    for (const QString& line : plan.leftOut + plan.changed)
        shown += u" - "_s + line.section(u"): "_s, -1).section(u" – "_s, 0, 0);
    return shown.replace(u"\r\n"_s, u"/"_s);
}
} // namespace

/// Bookmarks of a file on their way from a page into the archive.
class ImportTest : public TestCase {
    Q_OBJECT
private slots:
    void importedBookmarks_data()
    {
        QTest::addColumn<QString>("events");
        QTest::addColumn<QString>("result");
        const auto row = [](const char* name, const QString& events, const QString& result) {
            QTest::newRow(name) << events << result;
        };
        const auto list = [](const QString& name, const QString& inside) {
            return uR"(,["H","%1"],["+"]%2,["-"])"_s.arg(name, inside);
        };
        const auto link = [](const QString& address, const QString& title = u"t"_s) {
            return uR"(,["A","%2","%1"])"_s.arg(address, title);
        };
        row("nothing", {}, {});
        row("folders",
            uR"(,["+"])"_s + link(u"u:1"_s) +
                list(u" X\\n "_s, link(u"u:2"_s) + list(u"Y"_s, link(u"u:3"_s)) + link(u"u:4"_s)) +
                link(u"u:5"_s) + uR"(,["-"])"_s,
            u"Meine Datei(t|u:1| t|u:5|)X(t|u:2| t|u:4|)X – Y(t|u:3|)"_s);
        row("without bookmarks or a name", list(u"X"_s, list({}, link(u"u:1"_s))),
            u"X – Ohne Namen(t|u:1|)"_s);
        row("taken names",
            list(u"A"_s, link(u"u:1"_s)) + list(u"A"_s, link(u"u:1"_s)) +
                list(u"Wetter"_s, link(u"u:1"_s)) + list(u"Archiv"_s, link(u"u:1"_s)),
            u"A (2)(t|u:1|)A (3)(t|u:1|)Wetter (1)(t|u:1|)Archiv (1)(t|u:1|)"_s);
        row("there already",
            list(u"A"_s, link(u"http://0"_s) + link(u"http://1"_s)) +
                list(u"B"_s, link(u"http://0"_s) + link(u"http://0"_s)),
            u"B(t|http://0|) - ist schon im Archiv - ist schon im Archiv"
            " - steht mehrmals in diesem Ordner"_s);
        row("no room",
            list(u"1"_s, link(u"u:1"_s)) + list(u"2"_s, link(u"u:1"_s)) +
                list(u"3"_s, link(u"u:1"_s)),
            u"1(t|u:1|)2(t|u:1|) - das Archiv hat keinen Platz für weitere Ordner"_s);
        row("for nobody",
            link({}) + link(u" \\u0001JavaScript:x"_s) + link(u"java\\nscript:x"_s) +
                link(u"place:x"_s) + link(u"u:"_s + QString(199, u'x')) + link(u"u:Ж"_s),
            u" - hat keine Adresse - ist ein Skript und keine Seite"
            " - ist ein Skript und keine Seite - ist eine Suche des anderen Browsers"
            " - die Adresse ist länger als 200 Zeichen"
            " - die Adresse hat Zeichen, die das Archiv nicht speichern kann"_s);
        row("letters", link(u"http://ж.example/ä"_s, u"Ж€\\ud800"_s) + link(u"http://ä"_s, {}),
            u"Meine Datei(?€?|http://xn--f1a.example/%C3%A4| http://ä|http://ä|)"
            " - „?“ steht für Zeichen, die das Archiv nicht speichern kann"_s);
        row("descriptions",
            link(u"u:1"_s) + uR"(,["D"," a\n\r\n b\n\nc\r\rd  e\n "])"_s +
                list(u"X"_s, uR"(,["D","of X"])"_s + link(u"u:2"_s)),
            u"Meine Datei(t|u:1|a/b/c//d e)X(t|u:2|)"_s);
        row("cut", list(QString(201, u'n'), link(u"u:1"_s, QString(201, u't'))),
            QString(200, u'n') + u'(' + QString(200, u't') +
                u"|u:1|) -"
                " der Name ist gekürzt oder hat Zeichen, die das Archiv nicht speichern kann"
                " - der Titel ist gekürzt"_s);
        row("lists that end too often", uR"(,["-"],["-"])"_s + link(u"u:1"_s),
            u"Meine Datei(t|u:1|)"_s);
        row("deep",
            uR"(,["H","x"],["+"])"_s.repeated(60) + link(u"u:1"_s) + uR"(,["-"])"_s.repeated(59) +
                link(u"u:2"_s),
            u"x(t|u:2|)"_s + u"x – "_s.repeated(49) + u"x(t|u:1|)"_s);
        row("strangers", uR"(,["X"])"_s, u"refused"_s);
        row("no event", u",7"_s, u"refused"_s);
    }
    void importedBookmarks()
    {
        QFETCH(QString, events);
        QFETCH(QString, result);
        QCOMPARE(imported(events, QByteArrayView(QTest::currentDataTag()) == "no room" ? 2 : 10),
                 result);
    }

    void fullFoldersGoOnInOthers()
    {
        BookmarkFile file;
        file.folders.push_back({-1, u"F"_s});
        for (int i = 0; i < 70000; ++i)
            file.bookmarks.push_back({0, {}, QString::number(i), {}});
        ArchiveContents archive;
        archive.room = 3;
        const ImportPlan plan = ImportPlan::of(file, archive);
        QCOMPARE(plan.added, 70000);
        QCOMPARE(plan.folders.size(), 3U);
        QCOMPARE(plan.folders[2].name, u"F (2)"_s);
        QCOMPARE(plan.folders[1].bookmarks.size(), 32767U);
    }
};

QTEST_GUILESS_MAIN(ImportTest)
#include "ImportTest.moc"
