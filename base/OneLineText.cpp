#include "base/OneLineText.h"

QString oneLineText(const QString& text)
{
    constexpr qsizetype visibleAtMost = 1000;
    QString line = text.left(visibleAtMost);
    for (QChar& c : line) {
        if (c.isSpace() || c.category() == QChar::Other_Control)
            c = u' ';
    }
    return line;
}
