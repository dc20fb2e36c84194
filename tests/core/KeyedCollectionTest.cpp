#include "base/KeyedCollection.h"
#include "tests/TestCase.h"

namespace {
QString listed(const KeyedCollection<int>& list)
{
    QStringList parts;
    for (int i = 1; i <= list.Count(); ++i)
        parts << QStringLiteral("%1=%2").arg(list.Key(i)).arg(list.Item(i));
    return parts.join(QLatin1Char(' '));
}

KeyedCollection<int> abc()
{
    KeyedCollection<int> list;
    list.Add(1, QStringLiteral("a"));
    list.Add(2, QStringLiteral("b"));
    list.Add(3, QStringLiteral("c"));
    return list;
}
} // namespace

class KeyedCollectionTest : public TestCase {
    Q_OBJECT
private slots:
    void placesAndKeys()
    {
        KeyedCollection<int> list = abc();
        list.AddBefore(1, 10, QStringLiteral("first"));
        list.AddAfter(4, 40);
        list.AddAfter(2, 20);
        QCOMPARE(listed(list), QStringLiteral("first=10 a=1 =20 b=2 c=3 =40"));
        list.Remove(QStringLiteral("b"));
        list.Remove(1);
        QCOMPARE(listed(list), QStringLiteral("a=1 =20 c=3 =40"));
        QCOMPARE(list.Position(QStringLiteral("c")), 3);
        list.Add(5, QStringLiteral("b")); // a removed key is free again
        QCOMPARE(list.Item(5), 5);
    }

    void errorsLeaveTheListAlone()
    {
        KeyedCollection<int> list = abc();
        QVERIFY_THROWS_EXCEPTION(DuplicateKeyError, list.Add(9, QStringLiteral("a")));
        QVERIFY_THROWS_EXCEPTION(DuplicateKeyError, list.AddBefore(1, 9, QStringLiteral("c")));
        QVERIFY_THROWS_EXCEPTION(NotFoundError, list.AddBefore(4, 9, QStringLiteral("d")));
        QVERIFY_THROWS_EXCEPTION(NotFoundError, list.Remove(4));
        QVERIFY_THROWS_EXCEPTION(NotFoundError, list.Remove(QStringLiteral("A")));
        QVERIFY_THROWS_EXCEPTION(NotFoundError, list.Item(0));
        QCOMPARE(listed(list), QStringLiteral("a=1 b=2 c=3"));
    }
};

QTEST_APPLESS_MAIN(KeyedCollectionTest)
#include "KeyedCollectionTest.moc"
