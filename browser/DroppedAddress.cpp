#include "browser/DroppedAddress.h"

#include <QMimeData>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
bool names(const QString& line, const QUrl& url)
{
    return line == url.toLocalFile() || QUrl(line) == url;
}

/// Whether every line of `text` only repeats one of the list's entries.
bool repeats(const QString& text, const QList<QUrl>& urls)
{
    const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    return std::all_of(lines.begin(), lines.end(), [&urls](const QString& line) {
        return std::any_of(urls.begin(), urls.end(),
                           [&line](const QUrl& url) { return names(line.trimmed(), url); });
    });
}
} // namespace

DroppedAddress droppedAddress(const QMimeData& data)
{
    DroppedAddress dropped;
    const QList<QUrl> urls = data.urls();
    for (const QUrl& url : urls) {
        if (url.isLocalFile())
            dropped.files.append(url.toLocalFile());
    }
    if (data.hasFormat(u"text/plain"_s)) {
        const QString text = data.text();
        if (dropped.files.isEmpty() || !repeats(text, urls))
            dropped.text = text;
    } else if (dropped.files.isEmpty() && !urls.isEmpty()) {
        dropped.text = urls.constFirst().toString(QUrl::FullyEncoded);
    }
    return dropped;
}
