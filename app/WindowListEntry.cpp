#include "app/WindowListEntry.h"

using namespace Qt::StringLiterals;

namespace {
// A menu is as wide as its widest entry.
constexpr qsizetype longestTitle = 60;
constexpr int lastKey = 9;
} // namespace

QString windowListEntry(int number, const QString& title)
{
    QString shown = title;
    shown.replace(u"[*][*]"_s, u"[*]"_s); // doubled for titles only
    if (shown.size() > longestTitle) {
        qsizetype end = longestTitle - 1;
        if (shown[end - 1].isHighSurrogate())
            --end;
        shown = shown.left(end).trimmed() + u'…';
    }
    shown.replace(u'&', u"&&"_s);
    return (number <= lastKey ? u"&%1 %2"_s : u"%1 %2"_s).arg(number).arg(shown);
}
