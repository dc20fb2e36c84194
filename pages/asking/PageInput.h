#pragma once

#include <QObject>

class QWidget;

/// Tells when the user clicks in a page, touches it, presses a key in it, or turns to it
/// otherwise.
class PageInput : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// `view` shows the page: its window's, or one that takes it over for a while.
    void watch(QWidget* view);

signals:
    /// A button of the mouse goes down.
    void pressed();
    /// A button of the mouse goes up, a touch ends, or any key goes down.
    void used();
    /// As `used`, but of the keys only those that press a button of the page: Enter and
    /// Space.
    void clicked();
    /// The wheel turns over the page, or the page gets the focus.
    void turnedTo();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
