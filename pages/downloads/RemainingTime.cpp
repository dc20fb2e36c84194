#include "pages/downloads/RemainingTime.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

// All in seconds.
constexpr double beforeFirstGuess = 5;
/// What came longer ago hardly counts.
constexpr double memory = 30;
constexpr double patience = 10;

/// How far the clock may be from the newest estimate.
double tolerance(double left)
{
    return std::max(0.25 * left, 10.0);
}

/// "1 Minute", "3 Minuten"
QString countText(int count, const QString& one, const QString& many)
{
    return u"%1 %2"_s.arg(count).arg(count == 1 ? one : many);
}

} // namespace

void RemainingTime::add(qint64 received, qint64 total, std::chrono::milliseconds elapsed)
{
    const double seconds = std::chrono::duration<double>(elapsed).count();
    if (received < m_received) // it has begun anew
        *this = {};
    const auto came = static_cast<double>(received - m_received);
    const bool isFirst = std::exchange(m_received, received) < 0;
    if (isFirst || seconds <= 0)
        return;
    m_watched += seconds;
    m_idle = came > 0 ? 0 : m_idle + seconds;
    // At first the mean of all that was seen, later one in which the last seconds weigh most.
    m_rate += (came / seconds - m_rate) * std::min(1.0, seconds / std::min(m_watched, memory));
    if (total <= 0 || m_rate <= 0 || m_watched < beforeFirstGuess) {
        m_left = -1;
        return;
    }
    const double estimate = static_cast<double>(std::max<qint64>(total - received, 0)) / m_rate;
    m_left = m_left < 0 ? estimate : std::max(m_left - seconds, 0.0);
    if (std::abs(estimate - m_left) > tolerance(m_left))
        m_left = estimate;
}

bool RemainingTime::isStalled() const
{
    return m_idle >= patience;
}

QString RemainingTime::text() const
{
    constexpr int minute = 60;
    constexpr int hour = 60 * minute;
    if (m_left < 0 || isStalled())
        return {};
    if (m_left >= 24 * hour)
        return u"noch mehr als einen Tag"_s;
    if (m_left < 10)
        return u"noch wenige Sekunden"_s;
    const int tens = static_cast<int>(std::ceil(m_left / 10));
    if (tens < 6)
        return u"noch etwa %1 Sekunden"_s.arg(10 * tens);
    const int minutes = static_cast<int>(std::ceil(m_left / minute));
    if (minutes < 60)
        return u"noch etwa "_s + countText(minutes, u"Minute"_s, u"Minuten"_s);
    const int quarters = static_cast<int>(std::ceil(m_left / (15 * minute)));
    const QString hours = u"noch etwa "_s + countText(quarters / 4, u"Stunde"_s, u"Stunden"_s);
    return quarters % 4 == 0 ? hours : hours + u" %1 Minuten"_s.arg(15 * (quarters % 4));
}
