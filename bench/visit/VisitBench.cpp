// How long one visit takes with the longest history that the preferences allow.

#include "history/HistoryList.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int rows = 32767;
constexpr int visits = 201;

// Addresses of one length with a long common start: the slowest to tell apart.
QString address(int i)
{
    return QStringLiteral("https://www.example.org/a/rather/long/path/to/page-%1.html")
        .arg(i, 6, 10, QLatin1Char('0'));
}

double medianMilliseconds(HistoryCollection& history, int first, int step)
{
    std::vector<double> times;
    const QDateTime now = QDateTime::currentDateTime();
    for (int i = 0; i < visits; ++i) {
        const QString url = address(first + i * step);
        QElapsedTimer clock;
        clock.start();
        addVisit(history, url, QStringLiteral("Titel"), now, rows);
        times.push_back(static_cast<double>(clock.nsecsElapsed()) / 1e6);
    }
    std::nth_element(times.begin(), times.begin() + visits / 2, times.end());
    return times[visits / 2];
}

} // namespace

int main()
{
    HistoryCollection history;
    for (int i = 0; i < rows; ++i) {
        auto item = std::make_shared<HistoryItem>();
        item->SetItem(address(i), QStringLiteral("Titel"), QDateTime::currentDateTime());
        history.Add(item);
    }
    const double known = medianMilliseconds(history, rows - 1, 0);
    const double fresh = medianMilliseconds(history, rows, 1);
    std::printf("visit with %d entries: new %.3f ms, last one again %.3f ms (at most 1)\n", rows,
                fresh, known);
    return std::max(known, fresh) <= 1.0 ? 0 : 1;
}
