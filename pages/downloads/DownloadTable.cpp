#include "pages/downloads/DownloadTable.h"

#include "base/ShownText.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <algorithm>
#include <array>
#include <chrono>

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

bool isAtWork(const Download& download)
{
    return download.state == DownloadState::Running && !download.isPaused;
}

QString runningText(const Download& download)
{
    if (download.isPaused)
        return u"Angehalten"_s;
    const QString remaining = download.isStalled ? u"wartet auf den Server"_s : download.remaining;
    QString text = u"Wird geladen"_s;
    if (download.start == DownloadStart::Continued)
        text = u"Wird fortgesetzt"_s;
    else if (download.start == DownloadStart::Anew)
        text = u"Wird von vorn geladen"_s;
    return remaining.isEmpty() ? text : text + u", "_s + remaining;
}

} // namespace

bool isOpen(const Download& download)
{
    return download.state == DownloadState::Asking || download.state == DownloadState::Running;
}

bool canBePaused(const Download& download)
{
    return isAtWork(download) && download.canPause;
}

bool canGoOn(const Download& download)
{
    return download.state == DownloadState::Running && download.isPaused;
}

bool canBeReloaded(const Download& download)
{
    const bool hasEnded =
        download.state == DownloadState::Cancelled || download.state == DownloadState::Failed;
    return download.canReload && (hasEnded || (isAtWork(download) && download.isStalled));
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
        return runningText(download);
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

DownloadTable::DownloadTable(QObject* parent) : QAbstractTableModel(parent)
{
    m_clock.setInterval(std::chrono::seconds(1));
    connect(&m_clock, &QTimer::timeout, this, &DownloadTable::takeTime);
}

DownloadTable::Id DownloadTable::add(const Download& download, const DownloadActions& actions)
{
    const int row = rowCount();
    beginInsertRows({}, row, row);
    m_entries.append({++m_lastId, download, actions});
    endInsertRows();
    setClock();
    return m_lastId;
}

QList<DownloadTable::Entry>::iterator DownloadTable::entryOf(Id id)
{
    return std::find_if(m_entries.begin(), m_entries.end(),
                        [id](const Entry& candidate) { return candidate.id == id; });
}

const Download* DownloadTable::find(Id id) const
{
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(),
                                    [id](const Entry& candidate) { return candidate.id == id; });
    return entry == m_entries.end() ? nullptr : &entry->download;
}

void DownloadTable::changed(const Entry& entry)
{
    const int row = static_cast<int>(&entry - m_entries.constData());
    emit dataChanged(index(row, 0), index(row, columns - 1));
}

template <typename Change>
void DownloadTable::changeOpen(Id id, Change change)
{
    const auto entry = entryOf(id);
    if (entry == m_entries.end() || !isOpen(entry->download))
        return;
    change(entry->download);
    setClock();
    changed(*entry);
}

void DownloadTable::setClock()
{
    const bool isNeeded = std::any_of(m_entries.begin(), m_entries.end(),
                                      [](const Entry& entry) { return isAtWork(entry.download); });
    if (!isNeeded) {
        m_clock.stop();
    } else if (!m_clock.isActive()) {
        m_sinceClock.start();
        m_clock.start();
    }
}

void DownloadTable::takeTime()
{
    const std::chrono::milliseconds elapsed(m_sinceClock.restart());
    for (Entry& entry : m_entries) {
        Download& download = entry.download;
        if (!isAtWork(download))
            continue;
        entry.time.add(download.received, download.total, elapsed);
        const QString before = stateText(download);
        download.isStalled = entry.time.isStalled();
        download.remaining = entry.time.text();
        if (stateText(download) != before)
            changed(entry);
    }
}

void DownloadTable::setPlace(Id id, const std::optional<QString>& path)
{
    const auto entry = entryOf(id);
    if (entry == m_entries.end())
        return;
    entry->download.path = path.value_or(entry->download.path);
    if (isOpen(entry->download))
        entry->download.state = path ? DownloadState::Running : DownloadState::Asking;
    setClock();
    changed(*entry);
}

void DownloadTable::remove(Id id)
{
    const auto entry = entryOf(id);
    if (entry != m_entries.end()) {
        const int row = static_cast<int>(entry - m_entries.begin());
        beginRemoveRows({}, row, row);
        m_entries.erase(entry);
        endRemoveRows();
        setClock();
    }
}

void DownloadTable::setProgress(Id id, qint64 received, qint64 total)
{
    changeOpen(id, [&](Download& download) {
        if (received <= 0 && download.received > 0)
            return;
        // The server has another file by now, or cannot begin in the middle.
        if (received < download.received && download.start == DownloadStart::Continued)
            download.start = DownloadStart::Anew;
        download.received = received;
        download.total = total;
    });
}

void DownloadTable::setCanPause(Id id, bool canPause)
{
    changeOpen(id, [&](Download& download) { download.canPause = canPause; });
}

void DownloadTable::setPaused(Id id, bool isPaused)
{
    const auto entry = entryOf(id);
    if (entry != m_entries.end())
        entry->time = {};
    changeOpen(id, [&](Download& download) {
        download.isPaused = isPaused;
        download.isStalled = false;
        download.remaining.clear();
    });
}

void DownloadTable::restart(Id id, DownloadState state, DownloadStart start)
{
    const auto entry = entryOf(id);
    if (entry == m_entries.end())
        return;
    entry->time = {};
    Download& download = entry->download;
    download = {.path = download.path,
                .state = state,
                .received = start == DownloadStart::Continued ? download.received : 0,
                .total = download.total,
                .start = start,
                .canReload = download.canReload};
    setClock();
    changed(*entry);
}

void DownloadTable::finish(Id id, DownloadState state, const QString& failure)
{
    changeOpen(id, [&](Download& download) {
        download.state = state;
        download.failure = failure;
        download.isPaused = false;
    });
}

void DownloadTable::removeFinished()
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (!isOpen(at(row))) {
            beginRemoveRows({}, row, row);
            const Entry entry = m_entries.takeAt(row);
            endRemoveRows();
            if (entry.actions.forget)
                entry.actions.forget();
        }
    }
}

int DownloadTable::openCount() const
{
    return static_cast<int>(
        std::count_if(m_entries.begin(), m_entries.end(),
                      [](const Entry& entry) { return isOpen(entry.download); }));
}

QString unfinishedText(int count)
{
    if (count == 0)
        return {};
    return count == 1 ? u"Ein Download ist noch nicht fertig."_s
                      : u"%1 Downloads sind noch nicht fertig."_s.arg(count);
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
    if (isOpen(entry.download) && entry.actions.cancel)
        entry.actions.cancel();
}

void DownloadTable::pause(int row)
{
    const Entry entry = m_entries.at(row);
    if (canBePaused(entry.download) && entry.actions.pause)
        entry.actions.pause();
}

void DownloadTable::goOn(int row)
{
    const Entry entry = m_entries.at(row);
    if (canGoOn(entry.download) && entry.actions.goOn)
        entry.actions.goOn();
}

void DownloadTable::reload(int row)
{
    const Entry entry = m_entries.at(row);
    if (canBeReloaded(entry.download) && entry.actions.reload)
        entry.actions.reload();
}

QString DownloadTable::summary() const
{
    Download all{.path = {}};
    bool isTotalKnown = true;
    bool isAnyAtWork = false;
    for (const Entry& entry : m_entries) {
        const Download& download = entry.download;
        if (!isOpen(download))
            continue;
        all.received += download.received;
        all.total += download.total;
        isTotalKnown = isTotalKnown && download.total > 0;
        isAnyAtWork = isAnyAtWork || !download.isPaused;
    }
    const int count = openCount();
    if (count == 0)
        return {};
    const QString downloads = count == 1 ? u"1 Download"_s : u"%1 Downloads"_s.arg(count);
    if (!isAnyAtWork)
        return downloads + u", angehalten"_s;
    return isTotalKnown ? downloads + u", "_s + progressText(all) : downloads;
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
