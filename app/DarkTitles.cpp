#include "app/DarkTitles.h"

#include "base/WindowParts.h"

#include <QApplication>
#include <QEvent>
#include <QIcon>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QStyleOptionTitleBar>

namespace {

/// The style that draws, inside those that desktops put around it.
const QStyle* drawingStyle(const QStyle* style)
{
    while (const auto* around = qobject_cast<const QProxyStyle*>(style))
        style = around->baseStyle();
    return style;
}

/// What the button shows, on 16 x 16 units; empty for other pictures.
QPainterPath sign(QStyle::StandardPixmap which)
{
    QPainterPath path;
    switch (which) {
    case QStyle::SP_TitleBarMinButton:
        path.moveTo(4, 11);
        path.lineTo(12, 11);
        break;
    case QStyle::SP_TitleBarNormalButton:
        path.addRect(3.5, 6.5, 6, 6);
        path.moveTo(6.5, 4);
        path.lineTo(6.5, 3.5);
        path.lineTo(12.5, 3.5);
        path.lineTo(12.5, 9.5);
        path.lineTo(12, 9.5);
        break;
    case QStyle::SP_TitleBarCloseButton:
        path.moveTo(4, 4);
        path.lineTo(12, 12);
        path.moveTo(12, 4);
        path.lineTo(4, 12);
        break;
    default:
        break;
    }
    return path;
}

} // namespace

DarkTitles::Watch::Watch(QWidget* frame) : QObject(frame)
{
    frame->installEventFilter(this);
    apply();
}

bool DarkTitles::Watch::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange)
        QMetaObject::invokeMethod(this, &Watch::apply, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void DarkTitles::Watch::apply()
{
    QStyle* const style = QApplication::style();
    if (isDark(QApplication::palette()) && qobject_cast<DarkTitles*>(style) == nullptr &&
        drawingStyle(style)->inherits("QFusionStyle"))
        QApplication::setStyle(new DarkTitles(style));
}

QIcon DarkTitles::standardIcon(StandardPixmap which, const QStyleOption* option,
                               const QWidget* widget) const
{
    const QPainterPath path = sign(which);
    const QPalette palette = QApplication::palette();
    if (path.isEmpty() || !isDark(palette))
        return QProxyStyle::standardIcon(which, option, widget);
    constexpr int side = 16;
    const qreal ratio = qApp->devicePixelRatio();
    QPixmap picture(QSize(side, side) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette.color(QPalette::ButtonText), 1.5));
    painter.drawPath(path);
    painter.end();
    return QIcon(picture);
}

void DarkTitles::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const
{
    const auto* bar =
        control == CC_TitleBar ? qstyleoption_cast<const QStyleOptionTitleBar*>(option) : nullptr;
    if (bar == nullptr || !isDark(bar->palette)) {
        QProxyStyle::drawComplexControl(control, option, painter, widget);
        return;
    }
    // Fusion draws light buttons for active windows only, so an inactive one is drawn as
    // active, with the window's own colour in place of the highlight. It draws the shadow
    // of the caption in the colour `Text`.
    QStyleOptionTitleBar light = *bar;
    if ((bar->titleBarState & State_Active) == 0) {
        light.titleBarState |= State_Active;
        light.palette.setColor(QPalette::Highlight, bar->palette.color(QPalette::Window));
    }
    light.palette.setColor(QPalette::Text, light.palette.color(QPalette::Highlight).darker());
    QProxyStyle::drawComplexControl(control, &light, painter, widget);
}
