#pragma once

#include <QString>

#include <atomic>
#include <memory>
#include <thread>

struct xcb_connection_t;

/// Watches the window of another program from outside, as a window manager does: asks it
/// again and again whether it still answers, and presses keys in it. The program answers from
/// its event loop, so a late answer is a loop that was blocked.
class FrameWatch {
public:
    /// Waits for a window of the process. Throws BenchError when there is none in time.
    explicit FrameWatch(qint64 process);
    ~FrameWatch();
    Q_DISABLE_COPY_MOVE(FrameWatch)

    /// Presses a key, named by its character or keysym, with the modifiers of the protocol, and
    /// waits until the window has answered a question that came after it.
    void press(quint32 keysym, quint16 modifiers = 0);
    /// Waits until the window has answered at once for a while; returns how long that took, in
    /// milliseconds, without the while.
    double untilFree();
    /// How many windows of the process the window manager looks after.
    int windows(qint64 process) const;
    /// The longest wait for an answer since the last call, in milliseconds.
    double takeLongest();

private:
    void ask();
    bool findWindow(qint64 process);

    xcb_connection_t* m_display;
    quint32 m_root = 0;
    quint32 m_window = 0;
    std::atomic<double> m_longest = 0;
    /// Since when every answer has come at once: milliseconds of the steady clock, or 0.
    std::atomic<double> m_freeSince = 0;
    std::atomic<int> m_answers = 0;
    std::atomic<bool> m_isEnding = false;
    std::thread m_thread;
};
