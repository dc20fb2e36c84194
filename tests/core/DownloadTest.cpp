#include "pages/downloads/DownloadTable.h"
#include "pages/downloads/FileMove.h"
#include "pages/downloads/FileNames.h"
#include "pages/downloads/RemainingTime.h"
#include "pages/viewing/StoredWebData.h"
#include "tests/TestCase.h"

#include <QAbstractItemModelTester>
#include <QDir>

#include <array>

using namespace Qt::StringLiterals;

class DownloadTest : public TestCase {
    Q_OBJECT
private slots:
    void safeNames()
    {
        const auto check = [](const QString& suggested, const QString& safe) {
            QCOMPARE(safeFileName(suggested), safe);
            QVERIFY(partialFile(safe).toUtf8().size() <= 255);
        };
        check(u"Übersicht (1) – Größe.pdf"_s, u"Übersicht (1) – Größe.pdf"_s);
        check(u""_s, u"Download"_s);
        check(u" ..\u00A0"_s, u"Download"_s);
        check(u"../../etc/passwd"_s, u"passwd"_s);
        check(u"a\r\nb\x01\u202Eg\U000E0164pj.exe"_s, u"abgpj.exe"_s);
        check(u"a<b>:\"|?*.txt"_s, u"a_b______.txt"_s);
        check(u"con"_s, u"_con"_s);
        check(u"control.txt"_s, u"control.txt"_s);
        check(u"ende. "_s, u"ende"_s);
        check(QString(300, u'a') + u".tar.gz"_s, QString(239, u'a') + u".tar.gz"_s);
        check(QString(300, u'ä') + u".txt"_s, QString(121, u'ä') + u".txt"_s);
        check(u"\U0001F600"_s.repeated(100), u"\U0001F600"_s.repeated(61));
        check(QString(245, u'a') + u" bb"_s, QString(245, u'a'));
        check(u"x."_s + QString(300, u'b'), u"x."_s + QString(244, u'b'));
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

    void programs()
    {
        for (const auto& [name, content, runs] :
             {std::tuple{u"a.txt"_s, "text"_ba, false},
              {u"a.DESKTOP"_s, ""_ba, true},
              {u"setup.exe"_s, ""_ba, true},
              {u"program"_s, "\x7f"_ba + "ELF\2\1\1" + QByteArray(9, '\0') + "\2", true},
              {u"script"_s, "#!/bin/sh\necho\n"_ba, true}}) {
            writeBytes(path(name), content);
            QVERIFY2(runsWhenOpened(path(name)) == runs, qPrintable(name));
        }
    }

    void sizes()
    {
        const auto shown = [](qint64 received, qint64 total) {
            const Download download{.path = {}, .received = received, .total = total};
            return sizeText(download) + u'|' + QString::number(percentDone(download));
        };
        QCOMPARE(shown(1'200'000, 3'400'000), u"1,2 MB von 3,4 MB|35"_s);
        QCOMPARE(shown(999, -1), u"999 Byte|-1"_s);
        QCOMPARE(shown(999'960, 2'000'000'000'000), u"1,0 MB von 2,0 TB|0"_s);
        QCOMPARE(shown(500, 400), u"500 Byte von 400 Byte|100"_s);
    }

    void table()
    {
        DownloadTable table;
        const QAbstractItemModelTester tester(&table);
        int cancelled = 0;
        const auto first = table.add({.path = u"/d/a"_s}, {.cancel = [&] { ++cancelled; }});
        const auto cancel = [&] {
            ++cancelled;
            table.finish(first + 1, DownloadState::Cancelled);
        };
        const auto second =
            table.add({.path = u"/d/b"_s, .total = 10, .canPause = true}, {.cancel = cancel});
        table.setProgress(second, 5, 10);
        QCOMPARE(rows(table), QStringList({u"a|-1|0 Byte|Wird geladen"_s,
                                           u"b|50|5 Byte von 10 Byte|Wird geladen"_s}));
        table.setPlace(second, std::nullopt);
        QVERIFY(!table.isTarget(u"/d/b"_s) && table.openCount() == 2); // nor taken out
        table.removeFinished();
        table.setPlace(second, u"/d/b"_s);
        QVERIFY(table.isTarget(u"/d/../d/b"_s) && !table.isTarget(u"/d/c"_s));
        table.finish(first, DownloadState::Failed, u"Pech."_s);
        table.finish(first, DownloadState::Completed);
        table.setProgress(first, 1, 2);
        QCOMPARE(table.openCount(), 1);
        table.cancelAll();
        QCOMPARE(cancelled, 1);
        QCOMPARE(rows(table), QStringList({u"a|-1|0 Byte|Fehler: Pech."_s,
                                           u"b|50|5 Byte von 10 Byte|Abgebrochen"_s}));
        QVERIFY(!table.isTarget(u"/d/b"_s));
    }

    void remainingTime_data()
    {
        QTest::addColumn<QList<qint64>>("amounts"); // second by second
        QTest::addColumn<qint64>("total");
        QTest::addColumn<QString>("text");

        const auto even = [](qint64 rate, int seconds) {
            QList<qint64> amounts;
            for (int i = 0; i <= seconds; ++i)
                amounts << i * rate;
            return amounts;
        };
        QTest::newRow("too early") << even(100, 2) << qint64(100'000) << QString();
        QTest::newRow("nobody knows") << even(100, 20) << qint64(-1) << QString();
        QTest::newRow("seconds") << even(100, 10) << qint64(2'500) << u"noch etwa 20 Sekunden"_s;
        QTest::newRow("end") << even(100, 24) << qint64(2'500) << u"noch wenige Sekunden"_s;
        QTest::newRow("a minute") << even(100, 10) << qint64(6'500) << u"noch etwa 1 Minute"_s;
        QTest::newRow("minutes") << even(100, 10) << qint64(18'900) << u"noch etwa 3 Minuten"_s;
        QTest::newRow("an hour") << even(100, 10) << qint64(360'900) << u"noch etwa 1 Stunde"_s;
        QTest::newRow("hours") << even(100, 10) << qint64(800'000)
                               << u"noch etwa 2 Stunden 15 Minuten"_s;
        QTest::newRow("days") << even(1, 10) << qint64(1'000'000) << u"noch mehr als einen Tag"_s;
        QTest::newRow("nothing comes")
            << even(100, 20) + QList<qint64>(10, 2'000) << qint64(90'000) << QString();
        QTest::newRow("begun anew") << even(100, 20) + even(100, 2) << qint64(90'000) << QString();
    }
    void remainingTime()
    {
        QFETCH(const QList<qint64>, amounts);
        QFETCH(const qint64, total);
        RemainingTime time;
        for (const qint64 amount : amounts)
            time.add(amount, total, std::chrono::seconds(1));
        QTEST(time.text(), "text");
        QCOMPARE(time.isStalled(), QByteArray(QTest::currentDataTag()) == "nothing comes");
    }

    void remainingTimeDoesNotJumpAbout()
    {
        RemainingTime time;
        QStringList texts;
        qint64 received = 0;
        const qint64 total = 60'000;
        for (int i = 0; received < total; ++i) {
            time.add(received, total, std::chrono::seconds(1));
            if (texts.isEmpty() || texts.last() != time.text())
                texts << time.text();
            if (i == 300) // half of it is there
                QVERIFY2(QStringList({u"noch etwa 5 Minuten"_s, u"noch etwa 6 Minuten"_s})
                             .contains(texts.last()),
                         qPrintable(texts.last()));
            received += std::array{20, 250, 90, 40}.at(static_cast<std::size_t>(i % 4));
        }
        const QSet<QString> different(texts.begin(), texts.end());
        QVERIFY2(texts.size() == different.size(), qPrintable(texts.join(u", "_s)));
    }

    void moves()
    {
        const auto name = [this](const char* file) { return path(QString::fromLatin1(file)); };
        const std::atomic_bool goesOn = false;
        const std::atomic_bool isCancelled = true;
        writeBytes(name("from"), "new");
        writeBytes(name("to"), "old");
        QCOMPARE(copyFile(name("from"), name("none/to"), goesOn), FileMove::Failed);
        QCOMPARE(copyFile(name("from"), name("copy"), isCancelled), FileMove::Cancelled);
        QVERIFY(!QFile::exists(name("copy")) && QFile::exists(name("from")));
        QCOMPARE(copyFile(name("from"), u"/dev/full"_s, goesOn), FileMove::NoSpace);
        QCOMPARE(renameFile(name("from"), name("to"), true), FileMove::Done);
        QCOMPARE(bytesOf(name("to")), "new"_ba);
    }

    void storedDataGoesWhenMarkedOnly()
    {
        const QDir data(path());
        QVERIFY(data.mkpath(u"Local Storage/leveldb"_s) && data.mkpath(u"Cookies"_s));
        removeMarkedWebData(path());
        QVERIFY(data.exists(u"Local Storage"_s));
        QVERIFY(markStoredWebData(path()));
        removeMarkedWebData(path());
        QCOMPARE(data.entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList{u"Cookies"_s});
    }

private:
    static QStringList rows(const DownloadTable& table)
    {
        QStringList all;
        for (int row = 0; row < table.rowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < table.columnCount(); ++column)
                cells << table.index(row, column).data().toString();
            all << cells.join(u'|');
        }
        return all;
    }
};

QTEST_GUILESS_MAIN(DownloadTest)
#include "DownloadTest.moc"
