#pragma once

#include <QObject>
#include <QRect>

#include <functional>

class QWidget;

/// Keeps a widget over the view of a page: in its place when the view is moved or sized, and on
/// top when the engine puts a new widget for its picture into the view. The widget goes with
/// the view.
class OverlayPlacer : public QObject {
    Q_OBJECT
public:
    /// The parent of a widget over `view`: the view's own, since assistive tools find nothing
    /// but the page inside a view (seen with Qt 6.4). A view that is a window is the parent.
    static QWidget* parentFor(QWidget* view);

    /// Whether `widget` is kept over `view`. `widget` may be null.
    static bool isOver(const QWidget* widget, const QWidget* view);

    /// Belongs to `widget`, which is a child of `parentFor(view)`. `place` moves the widget; it
    /// is given the area of the view, in the coordinates of the widget's parent. It is called at
    /// once.
    OverlayPlacer(QWidget* view, QWidget* widget, std::function<void(const QRect& area)> place);

    void place();
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_view;
    QWidget* m_widget;
    std::function<void(const QRect&)> m_place;
};
