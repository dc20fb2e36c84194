#include "pages/downloads/DownloadTable.h"

#include "base/ShownText.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/// "3,4 MB": decimal, at most one decimal place, in German. `QLocale::formattedDataSize` would
/// say "1 Bytes", and "1.000,0 kB" as it chooses the unit before it rounds (seen with Qt 6.4).
QString bytesText(qint64 bytes)
{
    static constexpr std::array units{"Byte", "kB", "MB", "GB", "TB"};
    auto amount = static_cast<double>(std::max<qint64>(bytes, 0));
    std::size_t unit = 0;
    // What would be rounded to 1000 is shown in the next unit.
    for (const double limit = 999.95; amount >= limit && unit + 1 < units.size(); ++unit)
        amount /= 1000;
    const QLocale german(QLocale::German);
    const QString number = german.toString(amount, 'f', unit == 0 ? 0 : 1);
    return number + u' ' + QLatin1StringView(units.at(unit));
}

} // namespace

bool isOpen(const Download& download)
{
    return download.state == DownloadState::Asking || download.state == DownloadState::Running;
}

QString sizeText(const Download& download)
{
    const bool isWhole = !isOpen(download) && download.received == download.total;
    if (isWhole || download.total <= 0)
        return bytesText(download.received);
    return u"%1 von %2"_s.arg(bytesText(download.received), bytesText(download.total));
}

QString stateText(const Download& download)
{
    switch (download.state) {
    case DownloadState::Asking:
        return u"Wartet auf den Speicherort"_s;
    case DownloadState::Running:
        return u"Wird geladen"_s;
    case DownloadState::Completed:
        return u"Fertig"_s;
    case DownloadState::Cancelled:
        return u"Abgebrochen"_s;
    case DownloadState::Failed:
        break;
    }
    return u"Fehler: "_s + download.failure;
}

int percentDone(const Download& download)
{
    if (download.state == DownloadState::Completed)
        return 100;
    if (download.total <= 0)
        return -1;
    const auto received = static_cast<double>(std::min(download.received, download.total));
    return static_cast<int>(100.0 * received / static_cast<double>(download.total));
}

QString progressText(const Download& download)
{
    const int percent = percentDone(download);
    return percent < 0 ? u"unbekannt"_s : u"%1 %"_s.arg(percent);
}

DownloadTable::Id DownloadTable::add(const Download& download, const std::function<void()>& cancel)
{
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_entries.append({++m_lastId, download, cancel});
    endInsertRows();
    return m_lastId;
}

QList<DownloadTable::Entry>::iterator DownloadTable::find(Id id)
{
    return std::find_if(m_entries.begin(), m_entries.end(),
                        [id](const Entry& candidate) { return candidate.id == id; });
}

template <typename Change>
void DownloadTable::changeOpen(Id id, Change change)
{
    const auto entry = find(id);
    if (entry == m_entries.end() || !isOpen(entry->download))
        return;
    change(entry->download);
    const int row = static_cast<int>(entry - m_entries.begin());
    emit dataChanged(index(row, 0), index(row, columns - 1));
}

void DownloadTable::setPlace(Id id, const std::optional<QString>& path)
{
    changeOpen(id, [&](Download& download) {
        download.path = path.value_or(download.path);
        download.state = path ? DownloadState::Running : DownloadState::Asking;
    });
}

void DownloadTable::remove(Id id)
{
    const auto entry = find(id);
    if (entry != m_entries.end()) {
        const int row = static_cast<int>(entry - m_entries.begin());
        beginRemoveRows({}, row, row);
        m_entries.erase(entry);
        endRemoveRows();
    }
}

void DownloadTable::setProgress(Id id, qint64 received, qint64 total)
{
    changeOpen(id, [&](Download& download) {
        download.received = received;
        download.total = total;
    });
}

void DownloadTable::finish(Id id, DownloadState state, const QString& failure)
{
    changeOpen(id, [&](Download& download) {
        download.state = state;
        download.failure = failure;
    });
}

void DownloadTable::removeFinished()
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (!isOpen(at(row))) {
            beginRemoveRows({}, row, row);
            m_entries.removeAt(row);
            endRemoveRows();
        }
    }
}

int DownloadTable::openCount() const
{
    return static_cast<int>(
        std::count_if(m_entries.begin(), m_entries.end(),
                      [](const Entry& entry) { return isOpen(entry.download); }));
}

bool DownloadTable::isTarget(const QString& path) const
{
    const QString wanted = QDir::cleanPath(path);
    return std::any_of(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.download.state == DownloadState::Running &&
               QDir::cleanPath(entry.download.path) == wanted;
    });
}

void DownloadTable::cancel(int row)
{
    const Entry entry = m_entries.at(row); // a copy: cancelling may change the table
    if (isOpen(entry.download) && entry.cancel)
        entry.cancel();
}

void DownloadTable::cancelAll()
{
    for (int row = 0; row < rowCount(); ++row)
        cancel(row);
}

int DownloadTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

int DownloadTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns;
}

QVariant DownloadTable::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const Download& download = at(index.row());
    if (role == Qt::ToolTipRole) {
        return plainToolTip(index.column() == Name
                                ? QDir::toNativeSeparators(download.path)
                                : data(index, Qt::AccessibleTextRole).toString());
    }
    if (role == Qt::AccessibleTextRole && index.column() == Progress)
        return progressText(download);
    if (role != Qt::DisplayRole && role != Qt::AccessibleTextRole)
        return {};
    switch (index.column()) {
    case Name:
        return QFileInfo(download.path).fileName();
    case Progress:
        return percentDone(download);
    case Size:
        return sizeText(download);
    default:
        return stateText(download);
    }
}

QVariant DownloadTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static const QStringList captions{u"Name"_s, u"Fortschritt"_s, u"Größe"_s, u"Zustand"_s};
    return captions.value(section);
}
