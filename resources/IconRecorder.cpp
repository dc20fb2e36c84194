// Records how an SVG icon is drawn, so that the program can draw it without the library that
// reads SVG. Usage: icon_recorder ICON.svg RECORD

#include <QFile>
#include <QPainter>
#include <QPicture>
#include <QSvgRenderer>
#include <QTextStream>

namespace {

bool record(const QString& icon, const QString& target)
{
    QFile file(icon);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    // What takes its colour from the palette is given it when it is drawn (GlyphIcon.cpp).
    QSvgRenderer renderer(file.readAll().replace("currentColor", "black"));
    QPicture picture;
    picture.setBoundingRect(renderer.viewBox());
    QPainter painter(&picture);
    renderer.render(&painter, renderer.viewBoxF());
    painter.end();
    return renderer.isValid() && picture.save(target);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && record(QString::fromLocal8Bit(argv[1]), QString::fromLocal8Bit(argv[2])))
        return EXIT_SUCCESS;
    QTextStream(stderr) << "icon_recorder: the icon could not be recorded\n";
    return EXIT_FAILURE;
}
