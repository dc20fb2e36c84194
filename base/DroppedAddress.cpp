#include "base/DroppedAddress.h"

#include <QMimeData>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// The addresses of the list. A list may hold comments, too, which have no scheme.
QList<QUrl> addressList(const QMimeData& data)
{
    QList<QUrl> urls = data.urls();
    urls.removeIf([](const QUrl& url) { return !url.isValid() || url.scheme().isEmpty(); });
    return urls;
}

/// Whether every line of `text` only repeats one of the list's entries. An empty text
/// repeats nothing.
bool repeatsList(const QString& text, const QList<QUrl>& urls)
{
    const QSet<QUrl> entries(urls.begin(), urls.end());
    QSet<QString> paths;
    for (const QUrl& url : urls)
        paths.insert(url.toLocalFile());
    const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    return !lines.isEmpty() && std::all_of(lines.begin(), lines.end(), [&](const QString& line) {
        return paths.contains(line.trimmed()) || entries.contains(QUrl(line.trimmed()));
    });
}

QString unescaped(QString value)
{
    return value.replace(u"&lt;"_s, u"<"_s)
        .replace(u"&gt;"_s, u">"_s)
        .replace(u"&quot;"_s, u"\""_s)
        .replace(u"&nbsp;"_s, QChar(QChar::Nbsp))
        .replace(u"&amp;"_s, u"&"_s);
}

/// The value of an attribute; `attributes` is what a tag holds behind its name. They are
/// read one after the other and not searched for the name, which a value may hold, too.
QString attribute(const QString& attributes, const QString& name)
{
    static const QRegularExpression one(u"\\G\\s*([^\\s=>\"']+)(?:=\"([^\"]*)\")?"_s);
    auto matches = one.globalMatch(attributes);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.captured(1) == name)
            return unescaped(match.captured(2));
    }
    return {};
}

/// The link or image that is dragged out of a page. The engine describes it in HTML: it is
/// the first tag, its addresses are complete and the values are quoted [Qt 6.4].
struct DraggedElement {
    bool isImage = false;
    QUrl address;
};
DraggedElement draggedElement(const QMimeData& data)
{
    static const QRegularExpression first(u"^\\s*(?:<meta[^>]*>)?<(a|img|input)\\s"_s);
    const QString html = data.html();
    const QRegularExpressionMatch tag = first.match(html);
    if (!tag.hasMatch())
        return {};
    const bool isImage = tag.captured(1) != "a"_L1;
    const QString attributes = html.sliced(tag.capturedEnd());
    QString address = attribute(attributes, isImage ? u"src"_s : u"href"_s);
    if (isImage && address.isEmpty())
        address = attribute(attributes, u"srcset"_s).simplified().section(u' ', 0, 0);
    return {isImage, QUrl(address)};
}

/// The path of a local file. Where it begins with a drive's letter or is not UTF-8, which a
/// path in a QString cannot say, the whole address instead.
QString localName(const QUrl& url)
{
    static const QRegularExpression drive(u"^/[A-Za-z]:(/|$)"_s);
    const QString path = url.toLocalFile();
    const bool isPath =
        !path.contains(QChar(QChar::ReplacementCharacter)) && !drive.match(path).hasMatch();
    return isPath ? path : url.toString(QUrl::FullyEncoded);
}

/// What a drop of this one address offers.
DroppedAddress singleAddress(const QUrl& url)
{
    if (url.isLocalFile() && !url.hasQuery() && !url.hasFragment())
        return {{}, {localName(url)}};
    return {url.toString(QUrl::FullyEncoded), {}};
}
} // namespace

DroppedAddress droppedAddress(const QMimeData& data)
{
    const QList<QUrl> urls = addressList(data);
    const auto files =
        std::count_if(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
    if (!urls.isEmpty() && files == 0)
        return singleAddress(urls.constFirst());
    if (urls.size() == 1 && data.hasHtml()) {
        const DraggedElement element = draggedElement(data);
        if (element.isImage) // the file is a temporary copy that the engine made
            return element.address.isRelative() ? DroppedAddress() : singleAddress(element.address);
        if (element.address == urls.constFirst())
            return singleAddress(element.address);
    }
    DroppedAddress dropped;
    for (const QUrl& url : urls)
        if (url.isLocalFile())
            dropped.files.append(localName(url));
    if (data.hasFormat(u"text/plain"_s)) {
        const QString text = data.text();
        if (dropped.files.isEmpty() || !repeatsList(text, urls))
            dropped.text = text;
    }
    return dropped;
}
