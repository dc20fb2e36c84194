// Draws an SVG icon as pictures of the sizes that a desktop's icon theme holds.
// Usage: icon_pictures ICON.svg FOLDER SIZE... writes FOLDER/SIZExSIZE/apps/tessera.png

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

bool draw(QSvgRenderer& icon, const QString& folder, int size)
{
    QImage picture(size, size, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    icon.render(&painter);
    painter.end();
    const QString place = folder + u"/%1x%1/apps"_s.arg(size);
    return QDir().mkpath(place) && picture.save(place + u"/tessera.png"_s);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 4)
        return EXIT_FAILURE;
    QSvgRenderer icon(QString::fromLocal8Bit(argv[1]));
    bool drawn = icon.isValid();
    for (int i = 3; drawn && i < argc; ++i)
        drawn = draw(icon, QString::fromLocal8Bit(argv[2]), QByteArray(argv[i]).toInt());
    if (!drawn)
        QTextStream(stderr) << "icon_pictures: the pictures could not be made\n";
    return drawn ? EXIT_SUCCESS : EXIT_FAILURE;
}
