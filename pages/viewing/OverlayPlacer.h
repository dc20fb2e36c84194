#pragma once

#include <QObject>
#include <QRect>

#include <functional>

class QWidget;

/// Keeps a widget over a page: in its place when the page is moved or its size
/// changes, and on top when the engine makes a new widget for its picture. The
/// widget goes with the page.
class OverlayPlacer : public QObject {
    Q_OBJECT
public:
    /// Where a widget over `page` belongs: beside it, since assistive tools find
    /// nothing of ours inside a page; inside only where it has a window of its own.
    static QWidget* parentFor(QWidget* page);

    /// Whether `widget`, or null, is kept over `page`.
    static bool isOver(const QWidget* widget, const QWidget* page);

    /// `place` moves `widget`, which owns this and is a child of `parentFor(page)`; it
    /// is given the page's place in its parent, in pixels. It is called at once.
    OverlayPlacer(QWidget* page, QWidget* widget, std::function<void(const QRect& area)> place);

    void place();
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_page; // the widget, and this, go with it
    QWidget* m_widget;
    std::function<void(const QRect&)> m_place;
};
