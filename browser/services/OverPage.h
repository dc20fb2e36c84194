#pragma once

#include <QObject>

#include <functional>

class QWidget;

/// Keeps a widget over the page that is its parent: in its place when the
/// parent's size changes, and on top when the engine makes a new widget for
/// its picture. Belongs to the widget.
class OverPage : public QObject {
    Q_OBJECT
public:
    /// `place` moves the widget; it is called at once.
    OverPage(QWidget* widget, std::function<void()> place);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_widget;
    std::function<void()> m_place;
};
