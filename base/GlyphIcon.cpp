#include "base/GlyphIcon.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace {
QColor inkFor(QIcon::Mode mode)
{
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    return QGuiApplication::palette().color(group, QPalette::ButtonText);
}

class GlyphEngine : public QIconEngine {
public:
    explicit GlyphEngine(const QByteArray& svg) : m_svg(svg) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        QByteArray svg = m_svg;
        svg.replace("currentColor", inkFor(mode).name().toLatin1());
        QSvgRenderer(svg).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QIconEngine* clone() const override { return new GlyphEngine(m_svg); }

private:
    QByteArray m_svg;
};
} // namespace

QIcon glyphIcon(const QString& name)
{
    QFile file(u":/icons/glyphs/%1.svg"_s.arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new GlyphEngine(file.readAll()));
}
