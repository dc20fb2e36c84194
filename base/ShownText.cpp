#include "base/ShownText.h"

#include <QList>

using namespace Qt::StringLiterals;

bool isInvisible(char32_t character)
{
    // Unicode reserves this block for characters that are ignored when drawn, even those
    // that have no category yet.
    constexpr char32_t firstTag = 0xE0000;
    constexpr char32_t lastTag = 0xE0FFF;
    const QChar::Category category = QChar::category(character);
    return category == QChar::Other_Control || category == QChar::Other_Format ||
           (character >= firstTag && character <= lastTag);
}

QString messageText(const QString& text)
{
    QString shown;
    const QList<uint> characters = text.toUcs4();
    for (const uint c : characters)
        if (c == u'\n' || !isInvisible(c))
            shown += QChar::fromUcs4(c);
    return shown;
}

QString oneLineText(const QString& text)
{
    constexpr qsizetype visibleAtMost = 1000;
    QString line;
    const QList<uint> characters = QStringView(text).left(visibleAtMost).toUcs4();
    for (const uint c : characters)
        if (QChar::isSpace(c) || QChar::category(c) == QChar::Other_Control)
            line += u' ';
        else if (!isInvisible(c))
            line += QChar::fromUcs4(c);
    return line;
}

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
