#include "base/RecordField.h"
#include "base/Twips.h"
#include "base/WholeNumber.h"
#include "base/Windows1252.h"

#include <QtTest>

using namespace Qt::StringLiterals;

class RecordTest : public QObject {
    Q_OBJECT
private slots:
    void everyByteSurvives()
    {
        QByteArray all;
        for (int i = 0; i < 256; ++i)
            all.append(static_cast<char>(i));
        QCOMPARE(toWindows1252(fromWindows1252(all)), all);
    }

    void encodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("umlauts") << u"äÖß"_s << "\xE4\xD6\xDF"_ba;
        QTest::newRow("euro and quotes") << u"€„“…™Ÿ"_s << "\x80\x84\x93\x85\x99\x9F"_ba;
        QTest::newRow("outside") << u"aЖb"_s << "a?b"_ba;
        QTest::newRow("one mark per code point") << u"a\U0001F600b"_s << "a?b"_ba;
        QTest::newRow("lone surrogate") << QString(QChar(0xD83D)) + u"x"_s << "?x"_ba;
    }
    void encodes()
    {
        QFETCH(QString, text);
        QTEST(toWindows1252(text), "bytes");
    }

    void fieldsAreCutAndPadded()
    {
        const QByteArray bytes = RecordWriter(20)
                                     .int16(-2)
                                     .int32(0x01020304)
                                     .text(u"ab", 4)
                                     .text(u"\U0001F600bcdef", 4)
                                     .bytes();
        QCOMPARE(bytes, QByteArray("\xFE\xFF\x04\x03\x02\x01"
                                   "ab  ?bcd"));
        RecordReader reader(bytes);
        QCOMPARE(reader.int16(), qint16{-2});
        QCOMPARE(reader.int32(), 0x01020304);
        QCOMPARE(reader.text(4), u"ab"_s);
        QCOMPARE(reader.text(4), u"?bcd"_s);
    }

    void shortRecordsReadAsZero()
    {
        RecordReader reader(QByteArrayView("\x05\x00\x07 x", 5));
        QCOMPARE(reader.int16(), qint16{5});
        QCOMPARE(reader.text(4), u"\u0007 x"_s + QChar(0));
        QCOMPARE(reader.int32(), 0);
        QCOMPARE(reader.int16(), qint16{0});
    }

    void onlyBlanksAreTrimmed()
    {
        QCOMPARE(trimBlanks(u"  \ta b\r\n "), u"\ta b\r\n");
        QCOMPARE(trimBlanks(u"\u00A0 "), u"\u00A0");
        QCOMPARE(trimBlanks(u"   "), u"");
    }

    void numbersOverflow()
    {
        QCOMPARE(addWhole(qint16{32766}, 1), qint16{32767});
        QVERIFY_THROWS_EXCEPTION(OverflowError, addWhole(qint16{32767}, 1));
        QVERIFY_THROWS_EXCEPTION(OverflowError, addWhole(qint32{2147483647}, 1));
        QVERIFY_THROWS_EXCEPTION(OverflowError, toInt16(-32769));
        QCOMPARE(toInt32(-2147483648LL), qint32{-2147483647 - 1});
    }

    void parses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value");
        QTest::newRow("plain") << u"50"_s << 50;
        QTest::newRow("blanks and sign") << u" -7 "_s << -7;
        QTest::newRow("half to even, down") << u"6,5"_s << 6;
        QTest::newRow("half to even, up") << u"7,5"_s << 8;
        QTest::newRow("rounds into range") << u"-32768,4"_s << -32768;
        QTest::newRow("bare comma") << u"3,"_s << 3;
    }
    void parses()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        QCOMPARE(int{parseInt16(text)}, value);
    }

    void refuses_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("overflow");
        for (const QString& text :
             {u""_s, u" "_s, u"abc"_s, u"1.5"_s, u"1 2"_s, u"0x10"_s, u",5"_s})
            QTest::addRow("'%s'", qPrintable(text)) << text << false;
        for (const QString& text : {u"99999"_s, u"32767,5"_s, u"-40000"_s, QString(400, u'9')})
            QTest::addRow("'%s'", qPrintable(text.left(9))) << text << true;
    }
    void refuses()
    {
        QFETCH(QString, text);
        QFETCH(bool, overflow);
        if (overflow)
            QVERIFY_THROWS_EXCEPTION(OverflowError, parseInt16(text));
        else
            QVERIFY_THROWS_EXCEPTION(ConversionError, parseInt16(text));
    }

    void largeWindowsAreStoredAsTheLargest()
    {
        QCOMPARE(int{toStoredTwips(640)}, 9600);
        QCOMPARE(int{toStoredTwips(2184)}, 32760);
        QCOMPARE(int{toStoredTwips(2185)}, 32767);
    }
};

QTEST_APPLESS_MAIN(RecordTest)
#include "RecordTest.moc"
