#include "browser/services/DownloadNames.h"
#include "browser/services/DownloadTable.h"
#include "browser/services/StoredWebData.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;

class DownloadTest : public QObject {
    Q_OBJECT
private slots:
    void init() { QTest::failOnWarning(QRegularExpression(u".*"_s)); }

    void safeNames_data()
    {
        QTest::addColumn<QString>("suggested");
        QTest::addColumn<QString>("safe");
        const auto row = [](const QString& suggested, const QString& safe) {
            QTest::addRow("%s", qPrintable(suggested.left(40))) << suggested << safe;
        };
        row(u"Übersicht (1) – Größe.pdf"_s, u"Übersicht (1) – Größe.pdf"_s);
        row(u""_s, u"Download"_s);
        row(u" .. "_s, u"Download"_s);
        row(u"../../etc/passwd"_s, u"passwd"_s);
        row(u"C:\\Users\\x\\a.txt"_s, u"a.txt"_s);
        row(u"/"_s, u"Download"_s);
        row(u"..bashrc"_s, u"bashrc"_s);
        row(u"a\r\nb\x01\u202Egpj.exe"_s, u"abgpj.exe"_s);
        row(u"a<b>:\"|?*.txt"_s, u"a_b______.txt"_s);
        row(u"con"_s, u"_con"_s);
        row(u"LPT1.tar.gz"_s, u"_LPT1.tar.gz"_s);
        row(u"control.txt"_s, u"control.txt"_s);
        row(u"ende. "_s, u"ende"_s);
        row(QString(300, u'a') + u".tar.gz"_s, QString(239, u'a') + u".tar.gz"_s);
        row(QString(300, u'ä') + u".txt"_s, QString(121, u'ä') + u".txt"_s);
        row(u"\U0001F600"_s.repeated(100), u"\U0001F600"_s.repeated(61));
        row(u"x."_s + QString(300, u'b'), u"x."_s + QString(244, u'b'));
    }
    void safeNames()
    {
        QFETCH(QString, suggested);
        const QString safe = safeFileName(suggested);
        QTEST(safe, "safe");
        QVERIFY(partialFile(safe).toUtf8().size() <= 255);
    }

    void freeNames()
    {
        QStringList taken;
        for (const auto& expected : {u"a.tar.gz"_s, u"a (2).tar.gz"_s, u"a (3).tar.gz"_s}) {
            taken << freeFileName(u"a.tar.gz"_s, [&](const auto& n) { return taken.contains(n); });
            QCOMPARE(taken.last(), expected);
        }
        const QString longest = safeFileName(QString(300, u'a'));
        QCOMPARE(freeFileName(longest, [&](const auto& n) { return n == longest; }),
                 QString(242, u'a') + u" (2)"_s);
    }

    void programs_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("runs");
        QTest::newRow("a.txt") << "text"_ba << false;
        QTest::newRow("a.pdf") << "%PDF-1.4"_ba << false;
        QTest::newRow("a.DESKTOP") << ""_ba << true;
        QTest::newRow("setup.exe") << ""_ba << true;
        QTest::newRow("program") << "\x7f"_ba + "ELF\2\1\1" + QByteArray(9, '\0') + "\2" << true;
        QTest::newRow("script") << "#!/bin/sh\necho\n"_ba << true;
    }
    void programs()
    {
        QFETCH(QByteArray, content);
        const QTemporaryDir folder;
        QFile file(folder.filePath(QString::fromLatin1(QTest::currentDataTag())));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
        file.close();
        QTEST(runsWhenOpened(file.fileName()), "runs");
    }

    void sizes_data()
    {
        QTest::addColumn<qint64>("received");
        QTest::addColumn<qint64>("total");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("percent");
        const auto row = [](qint64 received, qint64 total, const QString& text, int percent) {
            QTest::addRow("%s", qPrintable(text)) << received << total << text << percent;
        };
        row(1'200'000, 3'400'000, u"1,2 MB von 3,4 MB"_s, 35);
        row(0, 0, u"0 Byte"_s, -1);
        row(999, -1, u"999 Byte"_s, -1);
        row(999'960, 2'000'000'000'000, u"1,0 MB von 2,0 TB"_s, 0);
        row(500, 400, u"500 Byte von 400 Byte"_s, 100);
    }
    void sizes()
    {
        QFETCH(qint64, received);
        QFETCH(qint64, total);
        const Download download{.path = {}, .received = received, .total = total};
        QTEST(sizeText(download), "text");
        QTEST(percentDone(download), "percent");
    }

    void table()
    {
        DownloadTable table;
        const QAbstractItemModelTester tester(&table);
        int cancelled = 0;
        const auto first = table.add({.path = u"/d/a"_s}, [&] { ++cancelled; });
        const auto second = table.add({.path = u"/d/b"_s, .total = 10}, [&] {
            ++cancelled;
            table.finish(first + 1, DownloadState::Cancelled);
        });
        table.progress(second, 5, 10);
        QCOMPARE(rows(table), QStringList({u"a|-1|0 Byte|Wird geladen"_s,
                                           u"b|50|5 Byte von 10 Byte|Wird geladen"_s}));
        QVERIFY(table.isTarget(u"/d/../d/b"_s) && !table.isTarget(u"/d/c"_s));
        table.finish(first, DownloadState::Failed, u"Pech."_s);
        table.finish(first, DownloadState::Completed);
        table.progress(first, 1, 2);
        QCOMPARE(table.running(), 1);
        table.cancelAll();
        QCOMPARE(cancelled, 1);
        QCOMPARE(rows(table), QStringList({u"a|-1|0 Byte|Fehler: Pech."_s,
                                           u"b|50|5 Byte von 10 Byte|Abgebrochen"_s}));
        QVERIFY(!table.isTarget(u"/d/b"_s));
        table.add({.path = u"/d/c"_s});
        table.removeFinished();
        QCOMPARE(rows(table), QStringList{u"c|-1|0 Byte|Wird geladen"_s});
    }

    void storedDataGoesWhenMarkedOnly()
    {
        const QTemporaryDir folder;
        const QDir data(folder.path());
        QVERIFY(data.mkpath(u"Local Storage/leveldb"_s) && data.mkpath(u"Cookies"_s));
        removeMarkedWebData(folder.path());
        QVERIFY(data.exists(u"Local Storage"_s));
        QVERIFY(markStoredWebData(folder.path()));
        removeMarkedWebData(folder.path());
        QCOMPARE(data.entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{u"Cookies"_s});
    }

private:
    static QStringList rows(const DownloadTable& table)
    {
        QStringList all;
        for (int row = 0; row < table.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < table.columnCount(); ++column) {
                cells << table.index(row, column).data().toString();
            }
            all << cells.join(u'|');
        }
        return all;
    }
};

QTEST_GUILESS_MAIN(DownloadTest)
#include "DownloadTest.moc"
