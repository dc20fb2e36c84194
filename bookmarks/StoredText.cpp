#include "bookmarks/StoredText.h"

#include "base/ShownText.h"
#include "base/Windows1252.h"

#include <QByteArray>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace {

bool isStorable(const QString& character)
{
    QByteArray byte;
    appendWindows1252(byte, character);
    return byte != "?" || character == u'?';
}

/// The character, or its number where nothing would be seen of it.
QString shown(char32_t character)
{
    return isInvisible(character) ? u"U+%1"_s.arg(uint(character), 4, 16, QChar(u'0')).toUpper()
                                  : QString::fromUcs4(&character, 1);
}

/// The characters that become "?", each once, and no more than fit into a line.
QStringList lostCharacters(QStringView text)
{
    constexpr qsizetype most = 10;
    QStringList lost;
    const auto characters = text.toUcs4();
    for (const uint code : characters) {
        const char32_t character = code;
        if (character < 0x80 || isStorable(QString::fromUcs4(&character, 1)))
            continue;
        if (const QString name = shown(character); !lost.contains(name))
            lost << name;
        if (lost.size() > most)
            return lost.first(most) << u"..."_s;
    }
    return lost;
}

QString cutText(QStringView text, qsizetype width)
{
    QByteArray bytes;
    appendWindows1252(bytes, text);
    const qsizetype all = bytes.size();
    while (bytes.endsWith(' ')) // blanks at the end are not kept anyway
        bytes.chop(1);
    if (bytes.size() <= width)
        return {};
    const QString breaks = text.contains(u'\n') ? u", ein Zeilenumbruch zählt zwei"_s : QString();
    return u"Wird nach %1 Zeichen abgeschnitten (es sind %2%3)."_s.arg(width).arg(all).arg(breaks);
}

} // namespace

QString lossesOf(QStringView text, qsizetype width)
{
    QStringList losses;
    if (const QString cut = cutText(text, width); !cut.isEmpty())
        losses << cut;
    if (const QStringList lost = lostCharacters(text.left(2 * width)); !lost.isEmpty())
        losses << u"Wird zu „?“: "_s + lost.join(u' ');
    return losses.join(u'\n');
}
