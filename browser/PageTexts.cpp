#include "browser/PageTexts.h"

#include "base/ShownText.h"

#include <QUrl>

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype longestKept = 4096; // characters
} // namespace

QString StripQuotes(const QString& text)
{
    if (text.size() < 2 || !text.startsWith(u'"') || !text.endsWith(u'"'))
        return text;
    return text.sliced(1, text.size() - 2);
}

QString captionOf(const EngineFrame& frame, const std::optional<EngineDocument>& own,
                  const QString& locationName)
{
    if (own) {
        if (frame.Document && !frame.Document->Title.isEmpty())
            return frame.Document->Title;
        if (!own->Title.isEmpty())
            return own->Title;
    }
    return locationName;
}

Visit visitOf(const EngineFrame& frame, const QString& url, const QString& locationUrl,
              const QString& locationName)
{
    return {url.endsWith(locationName) ? locationUrl : url,
            frame.Document ? frame.Document->Title : locationName};
}

bool isKept(const QString& address)
{
    return address.size() <= longestKept;
}

QString addressShown(const QString& address)
{
    return isKept(address) ? address : address.left(longestKept) + u'…';
}

QString linkShown(const QString& address)
{
    const QUrl url(address);
    const QString encoded = url.isValid() ? url.toString(QUrl::FullyEncoded)
                                          : QString::fromLatin1(QUrl::toPercentEncoding(
                                                address.left(longestKept), ":/?#[]@!$&'()*+,;=%"));
    return addressShown(encoded);
}

QString windowCaption(const QString& text)
{
    QString caption = oneLineText(text);
    return caption.replace(u"[*]"_s, u"[*][*]"_s);
}

QString privateCaption(const QString& caption)
{
    return caption.isEmpty() ? u"Privates Fenster"_s : caption + privateMark.toString();
}
