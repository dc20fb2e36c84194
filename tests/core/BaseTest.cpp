#include "base/KeyedCollection.h"
#include "base/WholeNumber.h"
#include "base/Windows1252.h"
#include "tests/TestCase.h"

using namespace Qt::StringLiterals;

namespace {
QString listed(const KeyedCollection<int>& list)
{
    QStringList parts;
    for (int i = 1; i <= list.Count(); ++i)
        parts << u"%1=%2"_s.arg(list.Key(i)).arg(list.Item(i));
    return parts.join(u' ');
}
} // namespace

/// What the files and lists of every room are made of.
class BaseTest : public TestCase {
    Q_OBJECT
private slots:
    void everyByteSurvives()
    {
        QByteArray all;
        for (int i = 0; i < 256; ++i)
            all.append(static_cast<char>(i));
        QByteArray encoded;
        appendWindows1252(encoded, fromWindows1252(all));
        QCOMPARE(encoded, all);
    }

    void numbersOverflow()
    {
        QVERIFY_THROWS_EXCEPTION(OverflowError, addWhole(qint16{32767}, 1));
        QVERIFY_THROWS_EXCEPTION(OverflowError, addWhole(qint32{2147483647}, 1));
        QVERIFY_THROWS_EXCEPTION(OverflowError, toInt16(-32769));
    }

    void parses()
    {
        QCOMPARE(int{parseInt16(u" -7 "_s)}, -7);
        QCOMPARE(int{parseInt16(u"6,5"_s)}, 6); // halves to the even number
        QCOMPARE(int{parseInt16(u"7,5"_s)}, 8);
        QCOMPARE(int{parseInt16(u"-32768,4"_s)}, -32768);
        QCOMPARE(int{parseInt16(u"3,"_s)}, 3);
        for (const QString& text : {u" "_s, u"1.5"_s, u"1 2"_s, u"0x10"_s, u",5"_s})
            QVERIFY_THROWS_EXCEPTION(ConversionError, parseInt16(text));
        for (const QString& text : {u"32767,5"_s, u"-40000"_s, QString(400, u'9')})
            QVERIFY_THROWS_EXCEPTION(OverflowError, parseInt16(text));
    }

    void placesAndKeys()
    {
        KeyedCollection<int> list;
        for (const auto& [item, key] : {std::pair{1, u"a"_s}, {2, u"b"_s}, {3, u"c"_s}})
            list.Add(item, key);
        list.AddBefore(1, 10, u"first"_s);
        list.AddAfter(4, 40);
        list.AddAfter(2, 20);
        QCOMPARE(listed(list), u"first=10 a=1 =20 b=2 c=3 =40"_s);
        list.Remove(u"b"_s);
        list.Remove(1);
        QCOMPARE(listed(list), u"a=1 =20 c=3 =40"_s);
        QCOMPARE(list.Position(u"c"_s), 3);
        // What fails leaves the list alone.
        QVERIFY_THROWS_EXCEPTION(DuplicateKeyError, list.Add(9, u"a"_s));
        QVERIFY_THROWS_EXCEPTION(DuplicateKeyError, list.AddBefore(1, 9, u"c"_s));
        QVERIFY_THROWS_EXCEPTION(NotFoundError, list.AddBefore(5, 9, u"d"_s));
        QVERIFY_THROWS_EXCEPTION(NotFoundError, list.Remove(5));
        QVERIFY_THROWS_EXCEPTION(NotFoundError, list.Remove(u"A"_s));
        QVERIFY_THROWS_EXCEPTION(NotFoundError, list.Item(0));
        QCOMPARE(listed(list), u"a=1 =20 c=3 =40"_s);
        list.Add(5, u"b"_s); // a removed key is free again
        QCOMPARE(list.Item(5), 5);
    }
};

QTEST_APPLESS_MAIN(BaseTest)
#include "BaseTest.moc"
