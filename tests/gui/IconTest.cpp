#include <QIcon>
#include <QImage>
#include <QTest>

// The icons reach a program that links the libraries, and are drawn: an icon
// whose file or whose image plug-in is missing stays empty without a word.
class IconTest : public QObject {
    Q_OBJECT

private slots:
    void areDrawn()
    {
        for (const auto* name : {"frame", "child"}) {
            const QIcon icon(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
            const QImage image = icon.pixmap(16).toImage();
            int opaque = 0;
            for (int i = 0; i < image.width() * image.height(); ++i)
                opaque += qAlpha(image.pixel(i % 16, i / 16)) == 255 ? 1 : 0;
            QVERIFY2(opaque > 16 * 16 / 3, name);
        }
    }
};

QTEST_MAIN(IconTest)
#include "IconTest.moc"
