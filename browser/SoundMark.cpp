#include "browser/SoundMark.h"

#include <QPainter>
#include <QPixmap>

namespace {

/// A loudspeaker in a field of 16 by 16, with two waves or a cross beside it.
void paintLoudspeaker(QPainter& painter, bool isSilenced)
{
    const QPolygonF loudspeaker({{2, 6}, {4.5, 6}, {8, 3}, {8, 13}, {4.5, 10}, {2, 10}});
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawPolygon(loudspeaker);
    painter.setBrush(Qt::NoBrush);
    if (isSilenced) {
        painter.setPen(QPen(QColor(200, 30, 30), 1.6));
        painter.drawLine(QPointF(10, 5.5), QPointF(14, 10.5));
        painter.drawLine(QPointF(14, 5.5), QPointF(10, 10.5));
        return;
    }
    painter.setPen(QPen(Qt::black, 1.4));
    constexpr int sixteenths = 16; // of a degree
    painter.drawArc(QRectF(7, 5.5, 4, 5), -60 * sixteenths, 120 * sixteenths);
    painter.drawArc(QRectF(7, 3.5, 7, 9), -60 * sixteenths, 120 * sixteenths);
}

QPixmap markedPicture(const QIcon& icon, int side, bool isSilenced)
{
    QPixmap picture(side, side);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    icon.paint(&painter, picture.rect());
    // The mark takes most of the icon, as it has to be seen in sixteen pixels; the upper and
    // the left edge show whose icon it is.
    const double edge = side / 5.0;
    painter.translate(edge, edge);
    painter.scale((side - edge) / 16, (side - edge) / 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(0.5, 1, 15.5, 15), 3, 3);
    paintLoudspeaker(painter, isSilenced);
    return picture;
}

} // namespace

QIcon withSoundMark(const QIcon& icon, EngineControl::Sound sound)
{
    if (sound == EngineControl::Sound::None)
        return icon;
    QIcon marked;
    for (const int side : {16, 24, 32, 48, 64})
        marked.addPixmap(markedPicture(icon, side, sound == EngineControl::Sound::Silenced));
    return marked;
}
