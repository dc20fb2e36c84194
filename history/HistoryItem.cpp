#include "history/HistoryItem.h"

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
