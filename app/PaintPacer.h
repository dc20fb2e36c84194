#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

/// How long to wait after a paint that took `cost` before the next one, both in
/// milliseconds: not at all while the machine keeps up with its display, else as
/// long as the paint took, so that painting leaves half of the time to the rest.
int pauseAfterPaint(qint64 cost);

/// Paces the paints of a top-level window. Whatever changes in the frame, be it
/// one letter, composes the frame anew with all the pages in it. On a machine
/// without a graphics processor that takes long enough for many loading pages to
/// keep the program from anything else; requests that come in a pause share the
/// paint after it. The first paint after a rest comes at once.
///
/// An object of this class belongs to its window.
class PaintPacer : public QObject {
    Q_OBJECT
public:
    explicit PaintPacer(QWidget* window);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* m_window;
    QTimer m_pause;
    bool m_isWanted = false;
};
