#include "history/HistoryList.h"

#include <algorithm>
#include <utility>

namespace {
/// Milliseconds of the wall clock. Two times of the toolkit are compared by their time zone,
/// which takes most of a sort.
qint64 momentOf(const QDateTime& when)
{
    constexpr qint64 ofADay = 86'400'000;
    return when.date().toJulianDay() * ofADay + when.time().msecsSinceStartOfDay();
}
} // namespace

void HistoryItem::SetItem(const QString& sUrl, const QString& sTitle, const QDateTime& urlDate)
{
    m_url = sUrl;
    m_title = sTitle;
    m_urlDate = urlDate;
}

bool HistoryItem::IsEqual(const HistoryItem& a, const HistoryItem& b) const
{
    switch (m_sortSel) {
    case 0:
        return a.m_url == b.m_url;
    case 1:
        return a.m_title == b.m_title;
    default:
        return a.m_urlDate == b.m_urlDate;
    }
}

bool HistoryItem::IsLess(const HistoryItem& a, const HistoryItem& b) const
{
    switch (m_sortSel) {
    case 0:
        return a.m_url < b.m_url;
    case 1:
        return a.m_title < b.m_title;
    default:
        return a.m_urlDate < b.m_urlDate;
    }
}

void addVisit(HistoryCollection& history, const QString& url, const QString& title,
              const QDateTime& now, int historyRows)
{
    auto item = std::make_shared<HistoryItem>();
    item->SetItem(url, title, now);
    const auto found = std::find_if(history.begin(), history.end(),
                                    [&url](const auto& entry) { return entry->Url() == url; });
    if (found != history.end()) {
        item->Visits((*found)->Visits() + 1);
        const int position = static_cast<int>(found - history.begin()) + 1;
        history.AddAfter(position, item);
        history.Remove(position);
        return;
    }
    if (historyRows <= history.Count())
        history.Remove(1);
    history.Add(item);
}

std::vector<std::shared_ptr<HistoryItem>> mostWanted(const HistoryCollection& history)
{
    using Entry = std::shared_ptr<HistoryItem>;
    const auto isBefore = [](const auto& a, const auto& b) { return a.first > b.first; };
    std::vector<std::pair<qint64, Entry>> weighed;
    weighed.reserve(static_cast<std::size_t>(history.Count()));
    for (const Entry& entry : history)
        weighed.emplace_back(momentOf(entry->UrlDate()), entry);
    std::stable_sort(weighed.begin(), weighed.end(), isBefore);
    qint64 weight = 2 * qint64{history.Count()}; // of a visit
    for (auto& [key, entry] : weighed)
        key = entry->Visits() * weight--;
    std::stable_sort(weighed.begin(), weighed.end(), isBefore);
    std::vector<Entry> wanted;
    wanted.reserve(weighed.size());
    for (auto& [key, entry] : weighed)
        wanted.push_back(std::move(entry));
    return wanted;
}
