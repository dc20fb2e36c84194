#include "address/AddressResolver.h"

#include "address/FilesAndDrives.h"

#include <QDir>
#include <QRegularExpression>

#include <optional>
#include <vector>

using namespace Qt::StringLiterals;

namespace {
/// The engine refuses longer addresses.
constexpr qsizetype longestUrl = qsizetype{2} * 1024 * 1024;

/// A path and what stands behind it in a URL ("?query#fragment"), if anything.
struct PathReading {
    QString path;
    QString tail;
};

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

/// `path` with "/" between the names.
QString withSlashes(QString path)
{
    return path.replace(u'\\', u'/');
}

/// `text` with its "%XX" read as UTF-8 bytes; a "%" that begins no code stays.
QString percentDecoded(const QString& text)
{
    // A "%" that begins no code belongs to the name, as QUrl takes it, too. Without the
    // escape the toolkit would make some character of what stands behind it.
    static const QRegularExpression alone(u"%(?![0-9A-Fa-f]{2})"_s);
    return QUrl::fromPercentEncoding(QString(text).replace(alone, u"%25"_s).toUtf8());
}

/// `path` cut before its first "?" or "#".
PathReading withoutTail(const QString& path)
{
    qsizetype end = 0;
    while (end < path.size() && path[end] != u'?' && path[end] != u'#')
        ++end;
    return {path.left(end), path.sliced(end)};
}

/// An absolute path without ".", ".." and empty names; nothing is above the root. A
/// separator at the end stays.
QString cleanPath(const QString& path)
{
    QString clean = QDir::cleanPath(path);
    while (clean.startsWith("/../"_L1))
        clean.remove(0, 3);
    if (clean == "/.."_L1)
        return u"/"_s;
    return path.endsWith(u'/') && !clean.endsWith(u'/') ? clean + u'/' : clean;
}

/// The URL of an absolute path.
QUrl fileUrl(const QString& path)
{
    // QUrl would take the name after "//" for a host.
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

/// An absolute path as the file system spells it: a name that is not there as
/// written is looked for without regard to case. Nothing when a name is missing. A
/// separator at the end stays if the path leads to a folder.
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

/// The URL of the first reading whose path is there.
std::optional<QUrl> firstThere(const std::vector<PathReading>& readings, const FileTable& files)
{
    for (const PathReading& reading : readings)
        if (const auto path = spelledOnDisk(reading.path, files))
            return withTail(fileUrl(*path), reading.tail);
    return std::nullopt;
}

bool isSeparator(QChar c)
{
    return c == u'/' || c == u'\\';
}

/// The length of the scheme (without ":") if `text` begins with a known one,
/// otherwise 0. "localhost:8080" and "C:\x" begin with none.
qsizetype schemeLength(const QString& text)
{
    static const QRegularExpression scheme(u"^([a-z][a-z0-9+.-]+):"_s,
                                           QRegularExpression::CaseInsensitiveOption);
    static const QStringList known{
        u"about"_s,  u"blob"_s,   u"callto"_s,      u"chrome"_s, u"data"_s, u"devtools"_s,
        u"file"_s,   u"ftp"_s,    u"http"_s,        u"https"_s,  u"irc"_s,  u"javascript"_s,
        u"magnet"_s, u"mailto"_s, u"news"_s,        u"qrc"_s,    u"sip"_s,  u"sms"_s,
        u"tel"_s,    u"urn"_s,    u"view-source"_s, u"xmpp"_s};
    const QRegularExpressionMatch match = scheme.match(text);
    const qsizetype length = match.capturedLength(1);
    const bool isOne = match.hasMatch() && (known.contains(match.captured(1).toLower()) ||
                                            QStringView(text).sliced(length).startsWith("://"_L1));
    return isOne ? length : 0;
}

/// The engine takes a host that ends in a number for an IPv4 address, and never
/// ends loading one that is none.
bool isBrokenIPv4(const QString& host)
{
    static const QRegularExpression endsInNumber(u"(^|\\.)([0-9]+|0x[0-9a-f]*)\\.?$"_s);
    static const QRegularExpression address(u"^((25[0-5]|2[0-4][0-9]|1?[0-9]?[0-9])(\\.|$)){4}$"_s);
    return endsInNumber.match(host).hasMatch() && !address.match(host).hasMatch();
}

QUrl checked(const QUrl& url)
{
    static const QStringList web{u"http"_s, u"https"_s, u"ftp"_s};
    const bool isWeb = web.contains(url.scheme());
    if (!url.isValid() || url.scheme().size() < 2 || url.toEncoded().size() > longestUrl ||
        (isWeb && (url.host().isEmpty() || isBrokenIPv4(url.host()))) ||
        (url.isLocalFile() && url.path(QUrl::FullyDecoded).contains(QChar(0))))
        return {};
    return url;
}

QUrl resolvePath(const QString& path, const FileTable& files)
{
    const QString whole = withSlashes(path);
    const PathReading cut = withoutTail(whole);
    std::vector<PathReading> readings{{whole, {}}, {percentDecoded(whole), {}}};
    if (!cut.tail.isEmpty()) {
        readings.push_back(cut);
        readings.push_back({percentDecoded(cut.path), cut.tail});
    }
    const auto url = firstThere(readings, files);
    return url ? *url : fileUrl(percentDecoded(whole));
}

/// "X:" and "X:\...".
bool isDrivePath(const QString& text)
{
    static const QRegularExpression drive(u"^[A-Za-z]:([/\\\\]|$)"_s);
    return drive.match(text).hasMatch();
}

QUrl resolveDrivePath(const QString& text, const FileTable& files, const DriveTable& drives)
{
    const QString root = drives.rootOf(text[0]);
    if (root.isEmpty())
        return {};
    // Cleaned before it is joined, so that ".." does not lead out of the drive.
    const QString below = cleanPath(u'/' + withSlashes(text.sliced(2)));
    return resolvePath(root == "/"_L1 ? below : root + below, files);
}

/// Whether the first name of `path`, which has no leading separator, is one of
/// those directly below the root. A path of one name only counts when its
/// case is the same as on the disk, as it may also be a host.
bool beginsBelowRoot(const QString& path, const FileTable& files)
{
    const QString whole = withSlashes(path);
    const QString first = whole.section(u'/', 0, 0);
    if (first.isEmpty() || first == "."_L1 || first == ".."_L1)
        return false;
    if (first == whole)
        return files.exists(u'/' + first);
    return firstThere({{u'/' + first, {}}, {u'/' + percentDecoded(first), {}}}, files).has_value();
}

/// `rest` is what follows "file:", in any of the spellings in use.
QUrl resolveFileScheme(const QString& rest, const FileTable& files, const DriveTable& drives)
{
    static const QRegularExpression isRemote(u"^//(?!localhost(/|$))[^/]"_s,
                                             QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression lead(u"^(//localhost(?=/|$))?/*"_s,
                                         QRegularExpression::CaseInsensitiveOption);
    const QString slashed = withSlashes(rest);
    QString below = slashed;
    below.remove(lead);
    QUrl remote(u"file:"_s + slashed);
    if (isRemote.match(slashed).hasMatch() && !remote.host().isEmpty() && !isDrivePath(below) &&
        !beginsBelowRoot(below, files))
        return remote;
    const QString path = u'/' + below;
    const PathReading cut = withoutTail(path);
    const auto url = firstThere(
        {{percentDecoded(cut.path), cut.tail}, {path, {}}, {percentDecoded(path), {}}}, files);
    if (url)
        return *url;
    if (isDrivePath(cut.path.sliced(1)))
        return withTail(resolveDrivePath(percentDecoded(cut.path.sliced(1)), files, drives),
                        cut.tail);
    // What is not there keeps its encoding: the name need not be UTF-8.
    return QUrl(u"file://"_s + path);
}

/// "http:" with whatever slashes behind it.
QUrl resolveWebScheme(const QString& text, qsizetype length)
{
    static const QRegularExpression lead(u"^[/\\\\]*"_s);
    PathReading cut = withoutTail(text.sliced(length + 1));
    cut.path.remove(lead);
    return QUrl(text.left(length) + u"://"_s + withSlashes(cut.path) + cut.tail);
}

QUrl resolveScheme(const QString& text, qsizetype length, const FileTable& files,
                   const DriveTable& drives)
{
    const QString scheme = text.left(length).toLower();
    if (scheme == "file"_L1)
        return resolveFileScheme(text.sliced(length + 1), files, drives);
    if (scheme == "http"_L1 || scheme == "https"_L1 || scheme == "ftp"_L1)
        return resolveWebScheme(text, length);
    return QUrl(text);
}

QUrl resolveHost(const QString& text)
{
    // Where the port is not valid, QUrl::fromUserInput would take the host for a scheme.
    static const QRegularExpression hostAndPort(u"^[^\\s/\\\\?#@:]+:[0-9]*([/?#]|$)"_s);
    if (hostAndPort.match(text).hasMatch())
        return QUrl(u"http://"_s + text);
    // It also takes ":..." for a file, which is refused below.
    const QUrl url = QUrl::fromUserInput(text);
    // It decodes percent-encoded digits, so that its result may have a port where the text
    // had none.
    const QString read = url.toString(QUrl::FullyEncoded);
    if (schemeLength(read) == 0 && hostAndPort.match(read).hasMatch())
        return QUrl(u"http://"_s + read);
    return url.isLocalFile() ? QUrl() : url;
}

QUrl resolve(const QString& typed, const FileTable& files, const DriveTable& drives)
{
    // A name that really holds a "\" or ends in a blank.
    if (typed.startsWith(u'/') && (typed.contains(u'\\') || typed.back().isSpace()) &&
        files.exists(typed))
        return fileUrl(typed);
    const QString text = typed.trimmed();
    if (text.isEmpty() || text.contains(QChar(0)))
        return {};
    if (const qsizetype length = schemeLength(text))
        return resolveScheme(text, length, files, drives);
    if (isDrivePath(text))
        return resolveDrivePath(text, files, drives);
    if (isSeparator(text[0]))
        return resolvePath(text, files);
    if (beginsBelowRoot(text, files))
        return resolvePath(u'/' + text, files);
    return resolveHost(text);
}
} // namespace

QUrl resolveAddress(const QString& typed, const FileTable& files, const DriveTable& drives)
{
    return checked(resolve(typed, files, drives));
}

QString licenceFound(const QString& typed, const QString& beside, const FileTable& files)
{
    // The mixed separators are of the program's own making: nobody types them.
    const bool isStored =
        typed.startsWith(u'/') && typed.endsWith(u"\\Lizenz.txt"_s, Qt::CaseInsensitive);
    if (!isStored || spelledOnDisk(withSlashes(typed), files))
        return typed;
    return beside + u"\\Lizenz.txt"_s;
}

AddressResolver machineResolver(const QString& beside)
{
    return [beside](const QString& typed) {
        const LinuxFileTable files;
        return resolveAddress(licenceFound(typed, beside, files), files, MountedDrives());
    };
}
