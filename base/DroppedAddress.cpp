#include "base/DroppedAddress.h"

#include <QMimeData>
#include <QSet>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// Whether every line of `text` only repeats one of the list's entries.
bool repeats(const QString& text, const QList<QUrl>& urls)
{
    const QSet<QUrl> entries(urls.begin(), urls.end());
    QSet<QString> paths;
    for (const QUrl& url : urls)
        paths.insert(url.toLocalFile());
    const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    return std::all_of(lines.begin(), lines.end(), [&](const QString& line) {
        return paths.contains(line.trimmed()) || entries.contains(QUrl(line.trimmed()));
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
