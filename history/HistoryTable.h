#pragma once

#include "base/SearchedTexts.h"
#include "history/HistoryList.h"

#include <QAbstractTableModel>

#include <array>
#include <vector>

/// The columns of the history table.
enum class HistoryColumn { Address, Title, Date };

/// The widths of the three columns in twips.
using HistoryWidths = std::array<int, 3>;

/// The widths that a fresh grid of this width, in twips, starts with.
HistoryWidths freshWidths(int gridWidth);
/// The widths that leave room for the scroll bar, which shows when the rows are higher
/// than the client area. All sizes are in twips; `rows` counts the header too.
HistoryWidths fittedWidths(int clientWidth, int clientHeight, int rowHeight, int rows);

/// The digits of a date as it is shown, read as one number: DDMMYYYYhhmmss. These
/// numbers have the order of the shown texts.
qint64 dateDigits(const QDateTime& when);
/// "DD.MM.YYYY - hh:mm:ss", 24 hours.
QString dateText(qint64 digits);

/// A snapshot of the history as a table: it does not follow later visits. Its
/// rows can be dragged: the address as plain text, copied.
class HistoryTable : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Takes the entries in their order.
    void fill(const HistoryCollection& history);
    /// Addresses ascend without regard to case, titles ascend by character code, dates
    /// descend as the texts they are, so that the day of the month comes first. Rows
    /// that are equal keep their order. Indexes keep their places, with other contents.
    void sortBy(HistoryColumn column);
    /// The address in a row (from 0); empty when there is no such row.
    QString address(int row) const;
    /// The rows that have `text` in what they show, without regard to case; none for an empty
    /// text.
    std::vector<int> rowsWith(const QString& text);

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
    struct Row {
        QString address;
        QString title;
        qint64 date = 0; ///< see `dateDigits`
    };

    const Row& at(int row) const;
    void sortByAddress();

    SearchedTexts m_texts;            ///< of `m_rows`, made when they are searched first
    std::vector<Row> m_rows;          ///< in the order of the history
    std::vector<std::size_t> m_order; ///< the places in `m_rows` of the rows as shown
};
