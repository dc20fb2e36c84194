#include "SampleArchive.h"
#include "base/SafeFile.h"
#include "bookmarks/ExportHtml.h"
#include "bookmarks/ExportNetscape.h"
#include "bookmarks/ExportText.h"

#include <QTemporaryDir>
#include <QTimeZone>

using namespace Qt::StringLiterals;

class ExportTest : public QObject {
    Q_OBJECT
private slots:
    void initTestCase()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        fillSample(m_book, u"/nowhere"_s);
    }

    void matchesGolden_data()
    {
        const Thema& first = *m_book.colThema()->Item(1);
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("folder.txt") << exportFolderText(first);
        QTest::newRow("archive.txt") << exportArchiveText(m_book);
        QTest::newRow("folder.htm") << exportFolderHtml(first);
        QTest::newRow("archive.htm") << exportArchiveHtml(m_book);
        QTest::newRow("folder-netscape.htm") << exportFolderNetscape(first, german);
        QTest::newRow("archive-netscape.htm") << exportArchiveNetscape(m_book, german);
    }
    void matchesGolden()
    {
        QFETCH(QByteArray, bytes);
        QCOMPARE(bytes, golden(QString::fromLatin1(QTest::currentDataTag())));
    }

    void headingComesFirst()
    {
        QVERIFY(exportArchiveText(m_book, u"Übersicht"_s)
                    .startsWith("\xDC"
                                "bersicht\n\n\r\nThema: "));
    }

    void times_data()
    {
        QTest::addColumn<QDateTime>("now");
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QByteArray>("stamp");
        QTest::newRow("the zone has no part in it")
            << QDateTime(QDate(2026, 11, 5), QTime(0, 0, 7), QTimeZone("Asia/Tokyo"))
            << QLocale(QLocale::English) << "(5. Nov 2026, 00:00:07)"_ba
            << "\"1793836807\""_ba;
        QTest::newRow("before the epoch")
            << QDateTime(QDate(1969, 12, 31), QTime(23, 59, 59)) << QLocale(QLocale::German)
            << "(31. Dez 1969, 23:59:59)"_ba
            << "\"-1\""_ba;
    }
    void times()
    {
        QFETCH(QDateTime, now);
        QFETCH(QLocale, locale);
        QFETCH(QByteArray, head);
        QFETCH(QByteArray, stamp);
        const QByteArray bytes = exportFolderNetscape(Thema(u"/nowhere"_s), {now, locale});
        QVERIFY2(bytes.contains(head), bytes);
        QVERIFY2(bytes.contains("ADD_DATE=" + stamp + ">"), bytes);
        const ExportTime late{QDateTime(QDate(2038, 1, 19), QTime(3, 14, 8)), locale};
        QVERIFY_THROWS_EXCEPTION(OverflowError, exportArchiveNetscape(m_book, late));
    }

    void writesOverWhatIsThere()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Export ü.txt"_s);
        writeBytes(path, QByteArray(1000, 'x'));
        writeFile(path, "kurz");
        QCOMPARE(bytesOf(path), "kurz"_ba);
        QVERIFY_THROWS_EXCEPTION(FileError, writeFile(u"/dev/full"_s, QByteArray(100000, 'x')));
    }

private:
    const ExportTime german{QDateTime(QDate(2026, 3, 5), QTime(14, 3, 9)),
                            QLocale(QLocale::German, QLocale::Germany)};
    Book m_book{u"/nowhere"_s};
};

QTEST_APPLESS_MAIN(ExportTest)
#include "ExportTest.moc"
