#pragma once

#include <QObject>

class QWidget;

/// Tells when the user clicks in a page, touches it, or presses a key in it.
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

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
