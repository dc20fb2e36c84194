#include "address/PathLookup.h"

#include "address/FileTable.h"

#include <QDir>
#include <QRegularExpression>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {
/// The name among `names` that differs from `wanted` in case only; the first in
/// order of its characters, so that the choice does not depend on the disk.
QString sameName(const QStringList& names, QStringView wanted)
{
    QString best;
    for (const QString& name : names)
        if (wanted.compare(name, Qt::CaseInsensitive) == 0 && (best.isEmpty() || name < best))
            best = name;
    return best;
}
} // namespace

QString withSlashes(QString path)
{
    return path.replace(u'\\', u'/');
}

QString percentDecoded(const QString& text)
{
    // A "%" that begins no code is one of the name, as QUrl takes it too; left alone, the
    // toolkit makes some character of what stands behind it.
    static const QRegularExpression alone(u"%(?![0-9A-Fa-f]{2})"_s);
    return QUrl::fromPercentEncoding(QString(text).replace(alone, u"%25"_s).toUtf8());
}

PathReading withoutTail(const QString& path)
{
    qsizetype end = 0;
    while (end < path.size() && path[end] != u'?' && path[end] != u'#')
        ++end;
    return {path.left(end), path.sliced(end)};
}

QString cleanPath(const QString& path)
{
    QString clean = QDir::cleanPath(path);
    while (clean.startsWith("/../"_L1))
        clean.remove(0, 3);
    if (clean == "/.."_L1)
        return u"/"_s;
    return path.endsWith(u'/') && !clean.endsWith(u'/') ? clean + u'/' : clean;
}

QUrl fileUrl(const QString& path)
{
    // What begins with "//" would be taken for a host.
    qsizetype start = 0;
    while (QStringView(path).sliced(start).startsWith("//"_L1))
        ++start;
    return QUrl::fromLocalFile(path.sliced(start));
}

QUrl withTail(const QUrl& url, const QString& tail)
{
    return url.isValid() && !tail.isEmpty() ? QUrl(QString::fromLatin1(url.toEncoded()) + tail)
                                            : url;
}

std::optional<QString> spelledOnDisk(const QString& path, const FileTable& files)
{
    const QString clean = cleanPath(path);
    QString found;
    for (const QStringView part : QStringView(clean).split(u'/', Qt::SkipEmptyParts)) {
        const QString folder = found + u'/';
        found = folder + part.toString();
        if (files.exists(found))
            continue;
        const QString name =
            sameName(files.entries(folder.size() == 1 ? folder : folder.chopped(1)), part);
        if (name.isEmpty())
            return std::nullopt;
        found = folder + name;
    }
    const bool keepsSeparator = found.isEmpty() || (clean.endsWith(u'/') && files.isFolder(found));
    return keepsSeparator ? found + u'/' : found;
}

std::optional<QUrl> firstThere(const std::vector<PathReading>& readings, const FileTable& files)
{
    for (const PathReading& reading : readings)
        if (const auto path = spelledOnDisk(reading.path, files))
            return withTail(fileUrl(*path), reading.tail);
    return std::nullopt;
}
