#include "pages/downloads/DownloadTable.h"

#include "base/ShownText.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

bool isOpen(const Download& download)
{
    return download.state == DownloadState::Asking || download.state == DownloadState::Running;
}

QString sizeText(qint64 bytes)
{
    static constexpr std::array units{"Byte", "kB", "MB", "GB", "TB"};
    auto amount = static_cast<double>(std::max<qint64>(bytes, 0));
    std::size_t unit = 0;
    // What would be shown as 1000 belongs to the next unit already.
    for (const double limit = 999.95; amount >= limit && unit + 1 < units.size(); ++unit)
        amount /= 1000;
    const QLocale german(QLocale::German);
    const QString number = german.toString(amount, 'f', unit == 0 ? 0 : 1);
    return number + u' ' + QLatin1StringView(units.at(unit));
}

QString sizeText(const Download& download)
{
    if (!isOpen(download) && download.received == download.total)
        return sizeText(download.received);
    return download.total > 0 ? u"%1 von %2"_s.arg(sizeText(download.received), //
                                                   sizeText(download.total))
                              : sizeText(download.received);
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
    return static_cast<int>(100.0 *
                            static_cast<double>(std::min(download.received, //
                                                         download.total)) /
                            static_cast<double>(download.total));
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

Download* DownloadTable::running(Id id)
{
    const auto entry = find(id);
    return entry != m_entries.end() && isOpen(entry->download) ? &entry->download : nullptr;
}

void DownloadTable::changed(const Download* download)
{
    const auto entry =
        std::find_if(m_entries.cbegin(), m_entries.cend(), [download](const Entry& candidate) {
            return &candidate.download == download;
        });
    const int row = static_cast<int>(entry - m_entries.cbegin());
    emit dataChanged(index(row, 0), index(row, columns - 1));
}

void DownloadTable::decide(Id id, const std::optional<QString>& path)
{
    if (Download* const download = running(id)) {
        download->path = path.value_or(download->path);
        download->state = path ? DownloadState::Running : DownloadState::Asking;
        changed(download);
    }
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

void DownloadTable::progress(Id id, qint64 received, qint64 total)
{
    if (Download* const download = running(id)) {
        download->received = received;
        download->total = total;
        changed(download);
    }
}

void DownloadTable::finish(Id id, DownloadState state, const QString& failure)
{
    if (Download* const download = running(id)) {
        download->state = state;
        download->failure = failure;
        changed(download);
    }
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

int DownloadTable::running() const
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
    const Entry entry = m_entries.at(row); // its end may change the table
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
