#pragma once

#include "history/HistoryList.h"
#include "history/TextOrder.h"

#include <QAbstractTableModel>

#include <vector>

/// The columns of the history table.
enum class HistoryColumn { Address, Title, Date };

/// A row of the history table, without a link to the entry.
struct HistoryRow {
    QString address;
    QString title;
    /// The digits of the date as it is shown, read as one number:
    /// DDMMYYYYhhmmss. It orders rows just as the shown texts do.
    qint64 date = 0;
};

qint64 dateDigits(const QDateTime& when);
/// "DD.MM.YYYY - hh:mm:ss", 24 hours.
QString dateText(qint64 digits);

/// Sorts the positions in `order` by the texts that one column of `rows` has
/// there; equal rows keep their order. Addresses ascend without regard to case,
/// titles ascend by character code, dates descend as the texts they are (so the
/// day of the month comes first).
void sortRows(RowOrder& order, const std::vector<HistoryRow>& rows, HistoryColumn column);

/// A snapshot of the history as a table: it does not follow later visits. Its
/// rows can be dragged: the address as plain text, copied.
class HistoryTable : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Takes the entries in their order.
    void fill(const HistoryCollection& history);
    /// Indexes keep their places, with other contents.
    void sortBy(HistoryColumn column);
    /// The address in a row (from 0); empty when there is no such row.
    QString address(int row) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    Qt::DropActions supportedDragActions() const override { return Qt::CopyAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;

private:
    const HistoryRow& at(int row) const;

    std::vector<HistoryRow> m_rows; ///< in the order of the history
    RowOrder m_order;               ///< of the rows as shown
};
