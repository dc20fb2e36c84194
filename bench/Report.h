#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <stdexcept>
#include <vector>

/// What makes a benchmark's figures worthless: a program or a file that failed.
class BenchError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Writes what a benchmark has measured as rows of one table to stdout: what,
/// against, ours, bare, ratio, at most, and whether the bound was kept. A row
/// begins and ends with a bar. Rows without a bound are for information.
class Report {
public:
    /// How `ours` compares with `bare`, both in `unit`; the ratio is to be `most`
    /// at the most.
    void ratio(const QString& what, const QString& against, double ours, double bare,
               const QString& unit, std::optional<double> most = {});
    /// A measure that stands alone and is to be `most` at the most; a count has
    /// no unit.
    void value(const QString& what, double ours, const QString& unit,
               std::optional<double> most = {});

    /// Runs a benchmark. Returns the exit status of the program: 0 when all bounds
    /// were kept. What `measure` throws goes to stderr.
    static int run(const std::function<void(Report&)>& measure);

private:
    bool m_allKept = true;
};

/// How long `action` takes, in milliseconds.
double measured(const std::function<void()>& action);
/// Of at least one value.
double median(std::vector<double> values);

struct Medians {
    double ours = 0;
    double bare = 0;
};

/// Takes turns in going first, so that neither side profits from the order.
/// Both return what they measured.
Medians interleaved(int runs, const std::function<double()>& ours,
                    const std::function<double()>& bare);
