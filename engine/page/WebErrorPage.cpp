#include "engine/page/WebErrorPage.h"

#include <QJsonArray>
#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {

constexpr int mostShown = 1000;
const QString scheme = u"tessera-error"_s;
const QString head = u"<!DOCTYPE html>\n<html lang=\"de\" class=\"tessera\"><head>"_s;
const QString style = uR"(<style>
body { font: 15px/1.5 sans-serif; color: #333; background: #f7f7f7; margin: 12vh auto; max-width: 36em;
       padding: 0 1.5em; }
h1 { font-size: 1.5em; font-weight: normal; }
a { display: inline-block; padding: 0.4em 1em; border: 1px solid #128a91; border-radius: 4px;
    color: #fff; background: #0e7684; text-decoration: none; }
a:focus { outline: 3px solid #f6bf4f; outline-offset: 1px; }
code { overflow-wrap: anywhere; white-space: pre-wrap; background: #e8e8e8; padding: 0.1em 0.3em; }
</style>)"_s;

/// A link, as the page has neither scripts nor anything else that could act by itself.
QString searchButton(const QUrl& search)
{
    if (!search.isValid())
        return uR"(<p>Im Internet suchen lässt sich das nicht: In den Einstellungen steht keine
Adresse einer Suchmaschine, die sich öffnen lässt, oder der Text ist zu lang.</p>
)"_s;
    const QString address = search.toString(QUrl::FullyEncoded).toHtmlEscaped();
    return uR"(<p><a id="search" autofocus href=")"_s + address +
           uR"(" title="Sucht bei %1">Im Internet suchen</a></p>
)"_s.arg(search.host().toHtmlEscaped());
}

QString shortened(const QString& typed)
{
    return typed.size() > mostShown ? typed.left(mostShown) + u'…' : typed;
}

} // namespace

QUrl WebErrorPage::url(const QString& typed)
{
    return QUrl::fromEncoded(scheme.toLatin1() + ":address=" + QUrl::toPercentEncoding(typed));
}

bool WebErrorPage::isAt(const QUrl& url)
{
    return url.scheme() == scheme;
}

bool WebErrorPage::isContent(const QUrl& url)
{
    return url.scheme() == "data"_L1 &&
           url.path(QUrl::FullyDecoded).section(u',', 1).startsWith(head);
}

bool WebErrorPage::isEnginesOwn(const QString& address)
{
    return address.startsWith("chrome-error:"_L1);
}

QString WebErrorPage::replacement(const QString& reason)
{
    const QString body = u"<h1>Unsichere Verbindung</h1><p>"_s +
                         reason.toHtmlEscaped().replace(u"\n\n"_s, u"</p><p>"_s) +
                         u"</p><p>Die Seite wurde nicht geöffnet. „Neu laden“ (F5) fragt "
                         "noch einmal.</p>"_s;
    const QByteArray texts =
        QJsonDocument(QJsonArray{style + body, u"Unsichere Verbindung"_s}).toJson();
    return u"(([html, title]) => { document.documentElement.innerHTML = html;"
           "document.title = title })(%1)"_s.arg(QString::fromUtf8(texts));
}

QString WebErrorPage::html(const QString& typed, const QUrl& search)
{
    const bool isEmpty = typed.trimmed().isEmpty();
    const QString title = isEmpty ? u"Keine Adresse"_s : u"Keine gültige Adresse"_s;
    const QString reason =
        isEmpty
            ? uR"(<p>Es ist keine Adresse angegeben.</p>
<p>Was die Schaltflächen „Startseite“ und „Suchen“ öffnen, steht in den Einstellungen.</p>
)"_s
            : uR"(<p>Das ist keine Adresse, die sich öffnen lässt:</p>
<p><code>)"_s + shortened(typed).toHtmlEscaped() +
                  uR"(</code></p>
)"_s + searchButton(search) +
                  uR"(<p>Bitte prüfen Sie die Schreibweise. Eine Adresse ist zum Beispiel „www.example.org“ oder
„/home/name/seite.html“.</p>
)"_s;
    return head + uR"(<meta charset="utf-8"><meta http-equiv="Content-Security-Policy"
content="default-src 'none'; style-src 'unsafe-inline'; base-uri 'none'; form-action 'none'">
<title>)"_s +
           title + u"</title>"_s + style + u"</head><body>\n<h1>"_s + title + u"</h1>\n"_s +
           reason + u"</body></html>\n"_s;
}

QString WebErrorPage::shownAddress(const QUrl& url)
{
    if (!isAt(url))
        return url.toString(QUrl::FullyEncoded);
    const QByteArray encoded = url.toEncoded();
    return QUrl::fromPercentEncoding(encoded.mid(encoded.indexOf('=') + 1));
}
