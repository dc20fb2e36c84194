#include <QIcon>
#include <QImage>
#include <QTest>

// The icons reach a program that links the libraries, and are drawn: an icon
// whose file or whose image plug-in is missing stays empty without a word.
class IconTest : public QObject {
    Q_OBJECT

private slots:
    void isDrawn_data();
    void isDrawn();
};

void IconTest::isDrawn_data()
{
    QTest::addColumn<QString>("name");
    for (const auto* name : {"frame", "child", "dialog"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void IconTest::isDrawn()
{
    QFETCH(QString, name);
    const QIcon icon(QStringLiteral(":/icons/%1.svg").arg(name));
    for (const int size : {16, 64}) {
        const QImage image = icon.pixmap(size).toImage();
        QCOMPARE(image.size(), QSize(size, size));
        int opaque = 0;
        for (int y = 0; y < size; ++y) {
            for (int x = 0; x < size; ++x)
                opaque += qAlpha(image.pixel(x, y)) == 255 ? 1 : 0;
        }
        QVERIFY2(opaque > size * size / 3, "the picture is all but empty");
    }
}

QTEST_MAIN(IconTest)
#include "IconTest.moc"
