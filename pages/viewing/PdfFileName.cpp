#include "pages/viewing/PdfFileName.h"

#include "pages/downloads/FileNames.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

QString pdfFileName(const QString& title)
{
    constexpr qsizetype longestStem = 60;
    static const QRegularExpression strokes(u"[/\\\\]"_s); // they part nothing in a title
    static const QRegularExpression start(u"^[-.\\s]+"_s); // hidden, or an option
    QString stem = title;
    stem = stem.replace(strokes, u" "_s).remove(start).simplified().left(longestStem);
    if (!stem.isEmpty() && stem.back().isHighSurrogate())
        stem.chop(1);
    return (stem.isEmpty() ? u"Seite"_s : safeFileName(stem)) + u".pdf"_s;
}
