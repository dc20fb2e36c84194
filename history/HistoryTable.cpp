#include "history/HistoryTable.h"

#include <QMimeData>

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <utility>

namespace {
constexpr int columns = 3;

/// The nearest whole number, halves to even.
int nearest(double value)
{
    return static_cast<int>(std::nearbyint(value));
}

/// Folds the letter case of each UTF-16 unit by itself. ASCII is folded here: addresses are
/// long, many, and mostly ASCII, and a look-up in the tables of Unicode takes its time.
QChar foldedCase(QChar unit)
{
    const char16_t code = unit.unicode();
    if (code >= u'A' && code <= u'Z')
        return QChar(code | 0x20U);
    return code < 0x80 ? unit : unit.toCaseFolded();
}

/// How many units at their beginning all texts have in common.
qsizetype sharedBeginning(const std::vector<QStringView>& texts)
{
    QStringView shared = texts.front();
    for (const QStringView text : texts) {
        const auto differ = std::mismatch(shared.begin(), shared.end(), text.begin(), text.end());
        shared.truncate(differ.first - shared.begin());
    }
    return shared.size();
}

/// The first units as a number of the same order: most comparisons need no more.
quint64 firstUnits(QStringView text)
{
    quint64 units = 0;
    for (qsizetype i = 0; i < 4; ++i)
        units = units << 16U | (i < text.size() ? text[i].unicode() : 0U);
    return units;
}

/// Sorts the places in `order` by the keys of their rows; rows of equal keys keep their
/// order. The keys lie beside the places, as each is compared many times.
template <typename KeyOf, typename IsBefore>
void sortByKey(std::vector<std::size_t>& order, KeyOf keyOf, IsBefore isBefore)
{
    std::vector<std::pair<decltype(keyOf(std::size_t{})), std::size_t>> entries;
    entries.reserve(order.size());
    for (const std::size_t row : order)
        entries.emplace_back(keyOf(row), row);
    std::stable_sort(entries.begin(), entries.end(), [&isBefore](const auto& a, const auto& b) {
        return isBefore(a.first, b.first);
    });
    std::transform(entries.begin(), entries.end(), order.begin(),
                   [](const auto& entry) { return entry.second; });
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

HistoryWidths freshWidths(int gridWidth)
{
    const int wide = nearest(gridWidth * 3.5 / 9);
    return {wide, wide, nearest(gridWidth * 2.0 / 9)};
}

HistoryWidths fittedWidths(int clientWidth, int clientHeight, int rowHeight, int rows)
{
    const long long allRows = static_cast<long long>(rowHeight) * rows;
    const int reserve = clientHeight < allRows ? 350 : 100;
    const int width = clientWidth - reserve;
    const int wide = nearest(width / 2.5);
    return {wide, wide, width - 2 * wide};
}

void HistoryTable::fill(const HistoryCollection& history)
{
    beginResetModel();
    m_rows.clear();
    m_texts = {};
    m_rows.reserve(static_cast<std::size_t>(history.Count()));
    for (const auto& item : history)
        m_rows.push_back({item->Url(), item->Title(), dateDigits(item->UrlDate())});
    m_order.resize(m_rows.size());
    std::iota(m_order.begin(), m_order.end(), std::size_t{0});
    endResetModel();
}

const HistoryTable::Row& HistoryTable::at(int row) const
{
    return m_rows[m_order[static_cast<std::size_t>(row)]];
}

void HistoryTable::sortBy(HistoryColumn column)
{
    if (m_rows.empty())
        return;
    // A sort moves the texts from cell to cell. The rows stay, with the selected one, so for
    // the views only the contents are new.
    switch (column) {
    case HistoryColumn::Address:
        sortByAddress();
        break;
    case HistoryColumn::Title:
        sortByKey(
            m_order, [this](std::size_t row) { return QStringView(m_rows[row].title); },
            std::less());
        break;
    case HistoryColumn::Date:
        sortByKey(
            m_order, [this](std::size_t row) { return m_rows[row].date; }, std::greater());
        break;
    }
    emit dataChanged(index(0, 0), index(rowCount() - 1, columns - 1));
}

void HistoryTable::sortByAddress()
{
    // One text that holds them all: texts of their own would lie all over the memory, where
    // each comparison waits for them.
    const auto lengthSoFar = [](qsizetype length, const Row& row) {
        return length + row.address.size();
    };
    QString folded(std::accumulate(m_rows.begin(), m_rows.end(), qsizetype{0}, lengthSoFar),
                   Qt::Uninitialized);
    std::vector<QStringView> keys;
    keys.reserve(m_rows.size());
    QChar* at = folded.data();
    for (const Row& row : m_rows) {
        QChar* const end = std::transform(row.address.begin(), row.address.end(), at, foldedCase);
        keys.emplace_back(at, end);
        at = end;
    }
    const qsizetype shared = sharedBeginning(keys);
    const auto keyOf = [&keys, shared](std::size_t row) {
        const QStringView rest = keys[row].sliced(shared);
        return std::pair(firstUnits(rest), rest);
    };
    sortByKey(m_order, keyOf, std::less());
}

QString HistoryTable::address(int row) const
{
    return row >= 0 && row < rowCount() ? at(row).address : QString();
}

std::vector<int> HistoryTable::rowsWith(const QString& text)
{
    m_texts.reserve(m_rows.size());
    for (std::size_t i = m_texts.count(); i < m_rows.size(); ++i)
        m_texts.add({m_rows[i].address, m_rows[i].title, dateText(m_rows[i].date)});
    const QByteArray word = foldedText(text);
    std::vector<bool> isFound(m_rows.size());
    if (!word.isEmpty())
        for (std::size_t i = m_texts.find(word, 0); i != m_texts.count();
             i = m_texts.find(word, i + 1))
            isFound[i] = true;
    std::vector<int> rows;
    for (std::size_t row = 0; row < m_order.size(); ++row)
        if (isFound[m_order[row]])
            rows.push_back(static_cast<int>(row));
    return rows;
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
    const Row& row = at(index.row());
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
