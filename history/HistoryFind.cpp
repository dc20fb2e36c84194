#include "history/HistoryFind.h"

#include "history/HistoryTable.h"

#include <QTableView>

#include <algorithm>

int HistoryFind::find(const QString& text)
{
    m_rows = m_table.rowsWith(text);
    return static_cast<int>(m_rows.size());
}

int HistoryFind::beside(bool backwards) const
{
    if (m_rows.empty())
        return -1;
    const QModelIndexList selected = m_grid.selectionModel()->selectedRows();
    const int here = selected.isEmpty() ? -1 : selected.first().row(); // -1: before all others
    const auto begin = m_rows.begin();
    if (backwards) {
        const auto behind = std::lower_bound(begin, m_rows.end(), here);
        return static_cast<int>((behind == begin ? m_rows.end() : behind) - begin) - 1;
    }
    const auto next = std::upper_bound(begin, m_rows.end(), here);
    return static_cast<int>(next == m_rows.end() ? 0 : next - begin);
}

void HistoryFind::show(int place)
{
    m_grid.selectRow(m_rows.at(static_cast<std::size_t>(place)));
}
