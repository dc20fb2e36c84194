#pragma once

#include <QString>

#include <chrono>

/// Estimates how long a download still takes, and says it so that it can be read: the estimate
/// runs down like a clock, and is corrected only when it is far off.
class RemainingTime {
public:
    /// `received` bytes of `total` are there, which is 0 or less while nobody knows; `elapsed`
    /// has passed since this was said before. To be called about once a second.
    void add(qint64 received, qint64 total, std::chrono::milliseconds elapsed);

    /// Whether nothing has come for some time.
    bool isStalled() const;
    /// "noch etwa 3 Minuten"; empty while nobody can tell.
    QString text() const;

private:
    qint64 m_received = -1;
    /// In bytes a second.
    double m_rate = 0;
    // These are in seconds.
    double m_watched = 0;
    double m_idle = 0;
    /// Below 0 while nobody can tell.
    double m_left = -1;
};
