#include "bookmarks/DroppedBookmark.h"

#include "base/DroppedAddress.h"
#include "bookmarks/UrlTitle.h"

#include <QRegularExpression>
#include <QUrl>

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
    static const QRegularExpression local(u"^file:///([A-Za-z]:(?=/|$))?"_s);
    const QRegularExpressionMatch match = local.match(dropped);
    if (!match.hasMatch())
        return dropped;
    if (match.hasCaptured(1)) {
        QString url = dropped;
        return url.remove(u"file:///"_s).replace(u'/', u'\\');
    }
    const QString path = dropped.sliced(match.capturedLength() - 1);
    static const QRegularExpression tail(u"[?#]"_s);
    const QString name = path.left(path.indexOf(tail)); // -1: the whole
    const QString decoded = QUrl(u"file://"_s + name).toLocalFile();
    if (decoded.contains(QChar(QChar::ReplacementCharacter))) // the name is no text
        return dropped;
    return decoded + path.sliced(name.size());
}

bool takesDrop(const QString& nodeText)
{
    return nodeText != u"Archiv"_s;
}
