#pragma once

#include <QTimer>

class BrowserToolbar;

/// The busy sign of a browser window: while it is on, `timTimer` ticks every
/// 300 ms. The progress bar shows activity, not progress. No tick while idle.
class BusyDisplay : public QObject {
    Q_OBJECT
public:
    /// Works on the bar and sign of `toolbar`, which must outlive this.
    explicit BusyDisplay(BrowserToolbar* toolbar, QObject* parent);

    void start();
    /// Ends the ticks and hides everything; the hidden bar keeps its value.
    void stop();
    /// As stop, and sets the bar back to its start.
    void finish();
    bool isOn() const { return m_timer.isActive(); }
    /// One step of the bar: from its minimum to its maximum, then again.
    void advance();

signals:
    void tick();
    /// The display went on or off.
    void switched(bool on);

private:
    void showStep(int step);

    BrowserToolbar* m_toolbar;
    QTimer m_timer;
    quint8 m_progressStep = 0;
};
