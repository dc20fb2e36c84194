// How long one visit takes with the longest history that the preferences allow.
#include "bench/Report.h"
#include "history/HistoryList.h"

using namespace Qt::StringLiterals;

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
        times.push_back(
            measured([&] { addVisit(history, url, QStringLiteral("Titel"), now, rows); }));
    }
    return median(times);
}

void measure(Report& report)
{
    HistoryCollection history;
    for (int i = 0; i < rows; ++i) {
        auto item = std::make_shared<HistoryItem>();
        item->SetItem(address(i), QStringLiteral("Titel"), QDateTime::currentDateTime());
        history.Add(item);
    }
    const double known = medianMilliseconds(history, rows - 1, 0);
    const double fresh = medianMilliseconds(history, rows, 1);
    report.value(u"visit of a new address, 32,767 entries"_s, fresh, u"ms"_s, 1);
    report.value(u"visit of the last address, 32,767 entries"_s, known, u"ms"_s, 1);
}

} // namespace

int main()
{
    return Report::run(measure);
}
