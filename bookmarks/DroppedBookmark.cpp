#include "bookmarks/DroppedBookmark.h"

#include "base/DroppedAddress.h"
#include "base/RecordField.h"

#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// How the archive notes a dropped address. Before a drive's letter every "file:///" goes
/// and "\" stands for every "/"; of a file of this system only the path is noted, as if the
/// file itself had been dropped. Any other text stays as it is.
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
    if (decoded.contains(QChar(QChar::ReplacementCharacter))) // the name is not UTF-8
        return dropped;
    return decoded + path.sliced(name.size());
}

/// What lies behind the last separator, if the first one is not the last character.
QStringView lastPart(QStringView text, char16_t separator, QStringView otherwise)
{
    const qsizetype first = text.indexOf(separator);
    if (first < 0 || first == text.size() - 1)
        return otherwise;
    return text.sliced(text.lastIndexOf(separator) + 1);
}

/// The title of the first visit to exactly this address, even an empty one; without a
/// visit the last part of the address.
QString GetUrlTitle(const QString& url, const HistoryCollection& history)
{
    const auto visit = std::find_if(history.begin(), history.end(),
                                    [&url](const auto& item) { return item->Url() == url; });
    if (visit != history.end())
        return (*visit)->Title();

    QStringView text = trimBlanks(url);
    if (text.endsWith(u'/') || text.endsWith(u'\\'))
        text.chop(1);
    return lastPart(text, u'\\', lastPart(text, u'/', text)).toString();
}
} // namespace

DroppedBookmark droppedBookmark(const DroppedAddress& dropped, const HistoryCollection& history)
{
    const QString offered =
        dropped.files.isEmpty() ? dropped.text.value_or(QString()) : dropped.files.constFirst();
    if (offered.isEmpty())
        return {};
    const QString url = archivedUrl(offered);
    return {GetUrlTitle(url, history), url};
}

bool takesDrop(const QString& nodeText)
{
    return nodeText != u"Archiv"_s;
}
