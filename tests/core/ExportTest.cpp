#include "SampleArchive.h"
#include "base/SafeFile.h"
#include "bookmarks/ExportHtml.h"
#include "bookmarks/ExportNetscape.h"
#include "bookmarks/ExportText.h"

#include <QTimeZone>

using namespace Qt::StringLiterals;

class ExportTest : public TestCase {
    Q_OBJECT
private slots:
    void initTestCase() { fillSample(m_book, u"/nowhere"_s); }

    void matchesGolden()
    {
        const Thema& first = *m_book.colThema()->Item(1);
        QCOMPARE(exportFolderText(first), golden(u"folder.txt"_s));
        QCOMPARE(exportArchiveText(m_book), golden(u"archive.txt"_s));
        QCOMPARE(exportFolderHtml(first), golden(u"folder.htm"_s));
        QCOMPARE(exportArchiveHtml(m_book), golden(u"archive.htm"_s));
        QCOMPARE(exportFolderNetscape(first, german), golden(u"folder-netscape.htm"_s));
        QCOMPARE(exportArchiveNetscape(m_book, german), golden(u"archive-netscape.htm"_s));
    }

    void headingComesFirst()
    {
        QVERIFY(exportArchiveText(m_book, u"Übersicht"_s)
                    .startsWith("\xDC"
                                "bersicht\n\n\r\nThema: "));
    }

    void times()
    {
        const auto bytes = [](const QDateTime& now, QLocale::Language language) {
            return exportFolderNetscape(Thema(u"/nowhere"_s), {now, QLocale(language)});
        };
        // The zone has no part in it.
        const QDateTime tokyo(QDate(2026, 11, 5), QTime(0, 0, 7), QTimeZone("Asia/Tokyo"));
        QVERIFY(bytes(tokyo, QLocale::English).contains("(5. Nov 2026, 00:00:07)"));
        QVERIFY(bytes(tokyo, QLocale::English).contains("ADD_DATE=\"1793836807\">"));
        const QDateTime early(QDate(1969, 12, 31), QTime(23, 59, 59));
        QVERIFY(bytes(early, QLocale::German).contains("(31. Dez 1969, 23:59:59)"));
        QVERIFY(bytes(early, QLocale::German).contains("ADD_DATE=\"-1\">"));
        const QDateTime late(QDate(2038, 1, 19), QTime(3, 14, 8));
        QVERIFY_THROWS_EXCEPTION(OverflowError, bytes(late, QLocale::German));
    }

    void writesOverWhatIsThere()
    {
        const QString file = path(u"Export ü.txt"_s);
        writeBytes(file, QByteArray(1000, 'x'));
        writeFile(file, "kurz");
        QCOMPARE(bytesOf(file), "kurz"_ba);
        QVERIFY_THROWS_EXCEPTION(FileError, writeFile(u"/dev/full"_s, QByteArray(100000, 'x')));
    }

private:
    const ExportTime german{QDateTime(QDate(2026, 3, 5), QTime(14, 3, 9)),
                            QLocale(QLocale::German, QLocale::Germany)};
    Book m_book{u"/nowhere"_s};
};

QTEST_APPLESS_MAIN(ExportTest)
#include "ExportTest.moc"
