#pragma once

#include <QDeadlineTimer>
#include <QObject>

/// Puts what a second start has brought into the clipboard. Under Wayland a program may do that
/// after the user's input only: there the text waits for the next key or click in a window of
/// the program, for two minutes at most.
class AddressToClipboard : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    void put(const QString& text);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString m_waiting;
    QDeadlineTimer m_end;
};
