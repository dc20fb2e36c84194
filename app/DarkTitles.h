#pragma once

#include <QProxyStyle>

/// The toolkit's own style with legible buttons for the windows inside of the frame
/// on a dark desktop: by itself it draws these in black. With light colours, and for
/// everything else, it is the style as it was.
class DarkTitles : public QProxyStyle {
    Q_OBJECT
public:
    /// Takes `style` over.
    explicit DarkTitles(QStyle* style) : QProxyStyle(style) {}
    /// Puts it over the application's style, if that is the one it is for.
    static void install();

    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};
