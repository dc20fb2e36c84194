#include "bookmarks/UrlTitle.h"

#include "base/RecordField.h"

#include <algorithm>

namespace {
/// What lies behind the last separator, if the first one is not the last character.
QStringView lastPart(QStringView text, char16_t separator, QStringView otherwise)
{
    const qsizetype first = text.indexOf(separator);
    if (first < 0 || first == text.size() - 1)
        return otherwise;
    return text.sliced(text.lastIndexOf(separator) + 1);
}
} // namespace

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
