#pragma once

#include <QObject>

class QWidget;

/// Tells when the user clicks in a page, or presses a key in it.
class PageInput : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// `view` shows the page: its window's, or one that takes it over for a while.
    void watch(QWidget* view);

signals:
    /// A button of the mouse goes down.
    void pressed();
    void used();
    /// By the mouse, a finger, or a key that presses a button.
    void clicked();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
