#include "history/HistoryList.h"

#include <algorithm>

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
        const int position = static_cast<int>(found - history.begin()) + 1;
        history.AddAfter(position, item);
        history.Remove(position);
        return;
    }
    if (historyRows <= history.Count())
        history.Remove(1);
    history.Add(item);
}
