#pragma once

#include <QProxyStyle>

/// The toolkit's own style with legible buttons for the windows inside of the frame
/// on a dark desktop: by itself it draws these in black. With light colours, and for
/// everything else, it is the style as it was.
class DarkTitles : public QProxyStyle {
    Q_OBJECT
public:
    /// Puts it over the application's style when the desktop is dark, or becomes so: a
    /// style that changes costs time at the start. Belongs to the frame.
    class Watch;

    /// Takes `style` over.
    explicit DarkTitles(QStyle* style) : QProxyStyle(style) {}

    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override;
};

class DarkTitles::Watch : public QObject {
    Q_OBJECT
public:
    explicit Watch(QWidget* frame);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void look();
};
