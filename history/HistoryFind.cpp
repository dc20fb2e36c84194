#include "history/HistoryFind.h"

#include "base/PlaceBeside.h"
#include "history/HistoryTable.h"

#include <QTableView>

int HistoryFind::find(const QString& text)
{
    m_rows = m_table.rowsWith(text);
    return static_cast<int>(m_rows.size());
}

int HistoryFind::beside(bool backwards) const
{
    const QModelIndexList selected = m_grid.selectionModel()->selectedRows();
    const int here = selected.isEmpty() ? -1 : selected.first().row(); // -1: before all others
    return placeBeside(m_rows, here, backwards);
}

void HistoryFind::show(int place)
{
    m_grid.selectRow(m_rows.at(static_cast<std::size_t>(place)));
}
