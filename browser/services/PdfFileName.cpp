#include "browser/services/PdfFileName.h"

using namespace Qt::StringLiterals;

namespace {
// Room for the suffix and the mark of a copy: names may have 255 bytes.
constexpr qsizetype longestName = 60;

bool isSafe(QChar character)
{
    return character.isPrint() && !u"\\/:*?\"<>|"_s.contains(character);
}
} // namespace

QString pdfFileName(const QString& title)
{
    QString name;
    for (const QChar character : title)
        name += isSafe(character) || character.isSurrogate() ? character : u' ';
    name = name.simplified().left(longestName);
    if (!name.isEmpty() && name.back().isHighSurrogate())
        name.chop(1);
    while (name.startsWith(u'.') || name.startsWith(u'-'))
        name.remove(0, 1);
    name = name.trimmed();
    return (name.isEmpty() ? u"Seite"_s : name) + u".pdf"_s;
}
