#include "base/ShownText.h"

#include <QList>

bool isInvisible(char32_t character)
{
    // Beyond the format marks the whole block is ignored by whatever draws text.
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
