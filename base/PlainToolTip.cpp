#include "base/PlainToolTip.h"

#include "base/ShownText.h"

using namespace Qt::StringLiterals;

QString plainToolTip(const QString& text)
{
    constexpr qsizetype visibleAtMost = 500;
    constexpr qsizetype perLine = 80;
    QString shown = oneLineText(text.left(visibleAtMost));
    if (text.size() > visibleAtMost)
        shown += u'…';
    for (qsizetype i = perLine; i < shown.size(); i += perLine + 1)
        shown.insert(shown.at(i).isLowSurrogate() ? i + 1 : i, u'\n');
    return u"<p style='white-space:pre'>%1</p>"_s.arg(shown.toHtmlEscaped());
}
