#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

/// How long to wait after a paint that took `cost` before the next one, both in
/// milliseconds: not at all while the machine keeps up with its display, else as
/// long as the paint took, so that half of the time is left for everything else.
int pauseAfterPaint(qint64 cost);

/// Paces the paints of a top-level window. Any change in the frame, be it one letter, makes
/// Qt compose the frame anew with all the pages in it (6.4). On a machine without a graphics
/// processor that takes so long that many loading pages would keep the program from anything
/// else. Requests that come in a pause share the paint after it; the first paint after a rest
/// comes at once. The benchmark Windows shows what this wins; look at it before this is removed.
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
