#include "history/HistoryTable.h"

#include <QMimeData>

#include <algorithm>
#include <numeric>
#include <utility>

namespace {
constexpr int columns = 3;

void sortByDate(RowOrder& order, const std::vector<HistoryRow>& rows)
{
    std::vector<std::pair<qint64, std::size_t>> entries;
    entries.reserve(order.size());
    for (const std::size_t row : order)
        entries.emplace_back(rows[row].date, row);
    std::stable_sort(entries.begin(), entries.end(),
                     [](const auto& a, const auto& b) { return a.first > b.first; });
    std::transform(entries.begin(), entries.end(), order.begin(),
                   [](const auto& entry) { return entry.second; });
}

std::vector<QStringView> texts(const std::vector<HistoryRow>& rows, QString HistoryRow::*text)
{
    std::vector<QStringView> result;
    result.reserve(rows.size());
    for (const HistoryRow& row : rows)
        result.emplace_back(row.*text);
    return result;
}
} // namespace

qint64 dateDigits(const QDateTime& when)
{
    int year = 0;
    int month = 0;
    int dayOfMonth = 0;
    when.date().getDate(&year, &month, &dayOfMonth);
    const QTime time = when.time();
    const qint64 day = (qint64{dayOfMonth} * 100 + month) * 10000 + year;
    return ((day * 100 + time.hour()) * 100 + time.minute()) * 100 + time.second();
}

QString dateText(qint64 digits)
{
    QString text = QStringLiteral("00.00.0000 - 00:00:00");
    for (qsizetype i = text.size() - 1; digits > 0 && i >= 0; --i) {
        if (text[i].isDigit()) {
            text[i] = QChar(static_cast<char16_t>(u'0' + digits % 10));
            digits /= 10;
        }
    }
    return text;
}

void sortRows(RowOrder& order, const std::vector<HistoryRow>& rows, HistoryColumn column)
{
    switch (column) {
    case HistoryColumn::Address:
        sortByText(order, texts(rows, &HistoryRow::address), Qt::CaseInsensitive);
        break;
    case HistoryColumn::Title:
        sortByText(order, texts(rows, &HistoryRow::title), Qt::CaseSensitive);
        break;
    case HistoryColumn::Date:
        sortByDate(order, rows);
        break;
    }
}

void HistoryTable::fill(const HistoryCollection& history)
{
    beginResetModel();
    m_rows.clear();
    m_rows.reserve(static_cast<std::size_t>(history.Count()));
    for (const auto& item : history)
        m_rows.push_back({item->Url(), item->Title(), dateDigits(item->UrlDate())});
    m_order.resize(m_rows.size());
    std::iota(m_order.begin(), m_order.end(), std::size_t{0});
    endResetModel();
}

const HistoryRow& HistoryTable::at(int row) const
{
    return m_rows[m_order[static_cast<std::size_t>(row)]];
}

void HistoryTable::sortBy(HistoryColumn column)
{
    if (m_rows.empty())
        return;
    // The texts move between the cells and not the rows with their selection:
    // for the views just the contents are new.
    sortRows(m_order, m_rows, column);
    emit dataChanged(index(0, 0), index(rowCount() - 1, columns - 1));
}

QString HistoryTable::address(int row) const
{
    return row >= 0 && row < rowCount() ? at(row).address : QString();
}

int HistoryTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int HistoryTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant HistoryTable::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignTop));
    if (role != Qt::DisplayRole)
        return {};
    const HistoryRow& row = at(index.row());
    switch (static_cast<HistoryColumn>(index.column())) {
    case HistoryColumn::Address:
        return row.address;
    case HistoryColumn::Title:
        return row.title;
    case HistoryColumn::Date:
        break;
    }
    return dateText(row.date);
}

QVariant HistoryTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columns)
        return {};
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignLeft | Qt::AlignVCenter));
    if (role != Qt::DisplayRole)
        return {};
    static const QStringList captions{QStringLiteral("Adresse"), QStringLiteral("Titel"),
                                      QStringLiteral("Datum - Uhrzeit")};
    return captions.at(section);
}

Qt::ItemFlags HistoryTable::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled |
           Qt::ItemNeverHasChildren;
}

QStringList HistoryTable::mimeTypes() const
{
    return {QStringLiteral("text/plain")};
}

QMimeData* HistoryTable::mimeData(const QModelIndexList& indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    auto data = std::make_unique<QMimeData>();
    data->setText(address(indexes.constFirst().row()));
    return data.release();
}
