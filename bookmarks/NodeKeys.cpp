#include "bookmarks/NodeKeys.h"

#include "base/WholeNumber.h"

namespace {
template <typename Collection>
qint16 positionOf(const Collection& items, qint32 number)
{
    qint32 position = 0;
    for (const auto& item : items) {
        ++position;
        if (item->Nr() == number)
            return toInt16(position);
    }
    return 0;
}
} // namespace

QString rootNodeKey()
{
    return folderNodeKey(0);
}

QString folderNodeKey(qint32 themaNr)
{
    return QString::number(themaNr) + u'@';
}

QString bookmarkNodeKey(qint32 themaNr, qint16 bookmarkNr)
{
    return folderNodeKey(themaNr) + QString::number(bookmarkNr);
}

void splitNodeKey(QStringView key, qint16& left, qint16& right)
{
    const qsizetype at = key.indexOf(u'@');
    const QStringView behind = key.mid(at + 1);
    left = parseInt16(key.left(at));
    if (at >= 0 && !behind.isEmpty())
        right = parseInt16(behind);
}

void GetDirIdx(const ThemaCollection& folders, qint32 number, qint16& position)
{
    position = positionOf(folders, number);
}

void GetBookmarkIdx(const BookmarkCollection& bookmarks, qint16 number, qint16& position)
{
    position = positionOf(bookmarks, number);
}
