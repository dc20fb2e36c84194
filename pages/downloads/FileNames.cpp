#include "pages/downloads/FileNames.h"

#include "base/ShownText.h"

#include <QFileInfo>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QLatin1StringView partialSuffix(".download");
/// In bytes of UTF-8: what common file systems take, less the engine's suffix.
constexpr qsizetype longestName = 255 - 9;

/// Whether a name is better off without the character: one that is not seen, above all a mark that
/// changes the direction of writing, hides the true suffix.
bool isUnfit(char32_t c)
{
    switch (QChar::category(c)) {
    case QChar::Other_Surrogate:
    case QChar::Other_NotAssigned:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return isInvisible(c);
    }
}

/// The name of the file in the path `suggested`. Of a name of many megabytes only the
/// beginning and the end count, so that whatever looks at it afterwards is done soon.
QString lastName(const QString& suggested)
{
    constexpr qsizetype mostOfEither = 1000;
    const qsizetype folders =
        std::max(suggested.lastIndexOf(u'/'), suggested.lastIndexOf(u'\\')) + 1;
    const QStringView name = QStringView(suggested).mid(folders);
    if (name.size() <= 2 * mostOfEither)
        return name.toString();
    return name.first(mostOfEither).toString().append(name.last(mostOfEither));
}

QString visible(const QString& text)
{
    QString kept;
    for (const char32_t c : text.toUcs4())
        if (!isUnfit(c))
            kept += QString::fromUcs4(&c, 1);
    return kept;
}

/// Where the suffix begins that is to stay behind a number: ".gz", ".tar.gz".
qsizetype suffixStart(const QString& name)
{
    static const QRegularExpression suffix(u"(?:\\.tar)?\\.[^. ]{1,16}$"_s);
    const qsizetype start = suffix.match(name).capturedStart();
    return start > 0 ? start : name.size();
}

/// The name with `number` before its suffix, its stem cut to make it fit.
QString fitted(const QString& name, const QString& number)
{
    const qsizetype start = suffixStart(name);
    const QString end = number + name.mid(start);
    const qsizetype room = longestName - end.toUtf8().size();
    // Each character takes a byte or more: so the loop below has little to cut off.
    QString stem = name.left(std::min(start, room));
    const auto endsBadly = [&] {
        const QChar last = stem.isEmpty() ? QChar() : stem.back();
        return last.isHighSurrogate() || (end.isEmpty() && (last == u'.' || last.isSpace()));
    };
    while (stem.toUtf8().size() > room || endsBadly())
        stem.chop(1);
    return stem + end;
}

} // namespace

QString partialFile(const QString& path)
{
    return path + partialSuffix;
}

QString safeFileName(const QString& suggested)
{
    static const QRegularExpression reserved(u"[<>:\"|?*]"_s);
    static const QRegularExpression ends(u"^[.\\s]+|[.\\s]+$"_s,
                                         QRegularExpression::UseUnicodePropertiesOption);
    static const QRegularExpression devices(
        u"^(?:CON|PRN|AUX|NUL|CLOCK\\$|COM[0-9]|LPT[0-9])(?=\\s*(?:\\.|$))"_s,
        QRegularExpression::CaseInsensitiveOption);
    QString name = visible(lastName(suggested));
    name.replace(reserved, u"_"_s).remove(ends);
    if (devices.match(name).hasMatch())
        name.prepend(u'_');
    return name.isEmpty() ? u"Download"_s : fitted(name, {});
}

QString freeFileName(const QString& name, const std::function<bool(const QString&)>& isTaken)
{
    QString candidate = name;
    for (int number = 2; isTaken(candidate); ++number)
        candidate = fitted(name, u" (%1)"_s.arg(number));
    return candidate;
}

QString pdfFileName(const QString& title)
{
    constexpr qsizetype longestStem = 60;
    static const QRegularExpression slashes(u"[/\\\\]"_s); // in a title they part no folders
    // A leading dot would hide the file, and programs would take a leading "-" for an option.
    static const QRegularExpression start(u"^[-.\\s]+"_s);
    QString stem = title;
    stem = stem.replace(slashes, u" "_s).remove(start).simplified().left(longestStem);
    if (!stem.isEmpty() && stem.back().isHighSurrogate())
        stem.chop(1);
    return (stem.isEmpty() ? u"Seite"_s : safeFileName(stem)) + u".pdf"_s;
}

QString shortPath(const QString& path)
{
    constexpr qsizetype longest = 100;
    if (path.size() <= longest)
        return path;
    qsizetype name = std::max(path.lastIndexOf(u'/'), path.size() - longest / 2);
    if (path.at(name).isLowSurrogate())
        ++name;
    const qsizetype folders = path.lastIndexOf(u'/', longest - (path.size() - name)) + 1;
    return path.left(folders) + u'…' + path.mid(name);
}

bool runsWhenOpened(const QString& path)
{
    static const QSet<QString> suffixes{
        u"desktop"_s, u"directory"_s, u"sh"_s,  u"bash"_s,     u"csh"_s,        u"zsh"_s, u"run"_s,
        u"bin"_s,     u"bundle"_s,    u"out"_s, u"appimage"_s, u"flatpakref"_s, u"jar"_s, u"jnlp"_s,
        u"py"_s,      u"pyw"_s,       u"pyc"_s, u"pl"_s,       u"rb"_s,         u"php"_s, u"lua"_s,
        u"tcl"_s,     u"exe"_s,       u"com"_s, u"bat"_s,      u"cmd"_s,        u"msi"_s, u"scr"_s,
        u"pif"_s,     u"ps1"_s,       u"vbs"_s, u"vbe"_s,      u"js"_s,         u"jse"_s, u"wsf"_s,
        u"hta"_s,     u"lnk"_s,       u"reg"_s, u"deb"_s,      u"rpm"_s,        u"snap"_s};
    static const QStringList kinds{u"application/x-executable"_s, u"application/x-sharedlib"_s,
                                   u"application/x-shellscript"_s, u"application/x-desktop"_s,
                                   u"application/x-ms-dos-executable"_s};
    const QFileInfo file(path);
    if (suffixes.contains(file.suffix().toLower()) || (file.isFile() && file.isExecutable()))
        return true;
    const QMimeType type = QMimeDatabase().mimeTypeForFile(file);
    return std::any_of(kinds.begin(), kinds.end(),
                       [&](const QString& kind) { return type.inherits(kind); });
}
