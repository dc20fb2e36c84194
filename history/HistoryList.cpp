#include "history/HistoryList.h"

#include <algorithm>

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
