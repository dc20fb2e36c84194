#include "bench/Report.h"

#include <QElapsedTimer>
#include <QStringList>

#include <algorithm>
#include <array>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

QString measure(double value, const QString& unit)
{
    const bool isCount = unit.isEmpty();
    return QString::number(value, 'f', isCount ? 0 : value < 10 ? 3 : 1) + u' ' + unit;
}

void writeRow(const QStringList& cells)
{
    constexpr std::array widths = {46, 40, 13, 13, 7, 9, 6};
    QString row;
    for (std::size_t i = 0; i < widths.size(); ++i)
        row += u"| "_s + cells.value(static_cast<qsizetype>(i)).leftJustified(widths.at(i)) + u' ';
    std::printf("%s|\n", row.toUtf8().constData());
    std::fflush(stdout);
}

QString verdict(double reached, std::optional<double> most)
{
    if (!most)
        return {};
    return reached <= *most ? u"ok"_s : u"MISSED"_s;
}

} // namespace

void Report::ratio(const QString& what, const QString& against, double ours, double bare,
                   const QString& unit, std::optional<double> most)
{
    const double reached = ours / bare;
    m_allKept = m_allKept && (!most || reached <= *most);
    writeRow({what, against, measure(ours, unit), measure(bare, unit),
              QString::number(reached, 'f', 3), most ? QString::number(*most, 'f', 2) : QString(),
              verdict(reached, most)});
}

void Report::value(const QString& what, double ours, const QString& unit,
                   std::optional<double> most)
{
    m_allKept = m_allKept && (!most || ours <= *most);
    writeRow({what, u"-"_s, measure(ours, unit), u"-"_s, u"-"_s,
              most ? QString::number(*most) + u' ' + unit : QString(), verdict(ours, most)});
}

int Report::run(const std::function<void(Report&)>& measure)
{
    try {
        Report report;
        measure(report);
        return report.m_allKept ? 0 : 1;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
}

double measured(const std::function<void()>& action)
{
    QElapsedTimer clock;
    clock.start();
    action();
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

Medians interleaved(int runs, const std::function<double()>& ours,
                    const std::function<double()>& bare)
{
    std::vector<double> ourValues;
    std::vector<double> bareValues;
    for (int i = 0; i < runs; ++i) {
        if (i % 2 == 0)
            ourValues.push_back(ours());
        bareValues.push_back(bare());
        if (i % 2 != 0)
            ourValues.push_back(ours());
    }
    return {median(ourValues), median(bareValues)};
}
