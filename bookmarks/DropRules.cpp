#include "bookmarks/DropRules.h"

#include "base/DroppedAddress.h"
#include "bookmarks/UrlTitle.h"

using namespace Qt::StringLiterals;

DroppedBookmark droppedBookmark(const DroppedAddress& dropped, const HistoryCollection& history)
{
    const QString offered =
        dropped.files.isEmpty() ? dropped.text.value_or(QString()) : dropped.files.constFirst();
    if (offered.isEmpty())
        return {};
    const QString url = archivedUrl(offered);
    return {GetUrlTitle(url, history), url};
}

QString archivedUrl(const QString& dropped)
{
    const QString scheme = u"file:///"_s;
    if (!dropped.startsWith(scheme))
        return dropped;
    QString url = dropped;
    return url.remove(scheme).replace(u'/', u'\\');
}

bool takesDrop(const QString& nodeText)
{
    return nodeText != u"Archiv"_s;
}
