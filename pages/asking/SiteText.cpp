#include "pages/asking/SiteText.h"

#include "base/ShownText.h"

#include <QList>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostCharacters = 1500;
constexpr qsizetype mostLines = 20;
constexpr qsizetype longestHost = 60;

/// Text without marks that are not seen, or that change the direction of what
/// follows; every sort of blank is a blank.
QString visible(const QString& text)
{
    QString clean;
    clean.reserve(text.size());
    const QList<uint> characters = text.toUcs4();
    for (const uint c : characters) {
        const QChar::Category category = QChar::category(c);
        if (c == u'\r')
            continue;
        if (c == u'\n' || category == QChar::Separator_Line ||
            category == QChar::Separator_Paragraph)
            clean += u'\n';
        else if (QChar::isSpace(c))
            clean += u' ';
        else if (!isInvisible(c))
            clean += QChar::fromUcs4(c);
    }
    return clean;
}

QString cut(const QString& text, qsizetype most)
{
    if (text.size() <= most)
        return text;
    const qsizetype length = text.at(most - 1).isHighSurrogate() ? most - 1 : most;
    return text.left(length) + u'…';
}

} // namespace

QString cleanText(const QString& text)
{
    // A page can send many megabytes: looking at all of them would take seconds.
    const QStringList lines = visible(text.left(mostCharacters * 4)).split(u'\n');
    QStringList kept;
    for (const QString& line : lines) {
        const bool isBlank = line.trimmed().isEmpty();
        if (!isBlank || (!kept.isEmpty() && !kept.constLast().isEmpty()))
            kept += isBlank ? QString() : line;
    }
    if (kept.size() > mostLines)
        kept = kept.first(mostLines) << u"…"_s;
    return cut(kept.join(u'\n').trimmed(), mostCharacters);
}

QString cleanLine(const QString& text, qsizetype most)
{
    return cut(visible(text.left(most * 4)).simplified(), most);
}

QString siteName(const QUrl& url)
{
    if (url.isLocalFile())
        return u"Eine Datei auf diesem Rechner"_s;
    QString host = url.host(QUrl::FullyEncoded);
    if (host.isEmpty())
        return u"Diese Seite"_s;
    if (host.size() > longestHost)
        host = u'…' + host.last(longestHost);
    else if (host.contains(u':'))
        host = u'[' + host + u']';
    const QString port = url.port() < 0 ? QString() : u":%1"_s.arg(url.port());
    return cleanLine(url.scheme() + u"://"_s + host + port);
}
