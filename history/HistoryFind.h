#pragma once

#include "base/FindLine.h"

#include <vector>

class HistoryTable;
class QTableView;

/// Lets a `FindLine` search the history as the table shows it.
class HistoryFind : public Findable {
public:
    /// `table` and `grid`, which shows it, outlive this.
    HistoryFind(HistoryTable& table, QTableView& grid) : m_table(table), m_grid(grid) {}

    int find(const QString& text) override;
    int beside(bool backwards) const override;
    void show(int place) override;

private:
    HistoryTable& m_table;
    QTableView& m_grid;
    std::vector<int> m_rows;
};
