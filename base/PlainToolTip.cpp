#include "base/PlainToolTip.h"

using namespace Qt::StringLiterals;

QString plainToolTip(const QString& text)
{
    constexpr qsizetype visibleAtMost = 500;
    constexpr qsizetype perLine = 80;
    QString shown = text.left(visibleAtMost);
    if (text.size() > visibleAtMost)
        shown += u'…';
    constexpr QChar mayBreak(0x200B);
    for (qsizetype i = perLine; i < shown.size(); i += perLine + 1)
        shown.insert(shown.at(i).isLowSurrogate() ? i + 1 : i, mayBreak);
    return u"<span>%1</span>"_s.arg(shown.toHtmlEscaped());
}
