#pragma once

#include <QProxyStyle>

/// Qt's Fusion style with legible title bar buttons for the windows inside the frame on a
/// dark desktop, where Fusion draws them in black (6.4). With light colours, and for
/// everything else, it is the style that it was given. Before this is removed, look at
/// the child windows with a dark palette.
class DarkTitles : public QProxyStyle {
    Q_OBJECT
public:
    /// Sets it as the application's style when the desktop is dark, or becomes so, and not
    /// before: changing the style costs time at the start. Belongs to the frame.
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
    void apply();
};
