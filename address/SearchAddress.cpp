#include "address/SearchAddress.h"

#include <QUrlQuery>

#include <array>

using namespace Qt::StringLiterals;

namespace {

/// No server takes an address of any length.
constexpr qsizetype longestQuery = 1000;

struct Engine {
    /// The host, or the part of it in front of the country's domain where it ends in a dot.
    QLatin1StringView host;
    QLatin1StringView path;
    QLatin1StringView item;
    /// The host that answers, if it is another one.
    QLatin1StringView answers = {};
};

constexpr std::array engines{
    Engine{"baidu.com"_L1, "/s"_L1, "wd"_L1},
    Engine{"bing.com"_L1, "/search"_L1, "q"_L1},
    Engine{"duckduckgo.com"_L1, "/"_L1, "q"_L1},
    Engine{"ecosia.org"_L1, "/search"_L1, "q"_L1},
    Engine{"google."_L1, "/search"_L1, "q"_L1},
    Engine{"metager.de"_L1, "/meta/meta.ger3"_L1, "eingabe"_L1},
    Engine{"metager.org"_L1, "/meta/meta.ger3"_L1, "eingabe"_L1},
    Engine{"mojeek.com"_L1, "/search"_L1, "q"_L1},
    Engine{"qwant.com"_L1, "/"_L1, "q"_L1},
    Engine{"search.brave.com"_L1, "/search"_L1, "q"_L1},
    Engine{"startpage.com"_L1, "/sp/search"_L1, "query"_L1},
    Engine{"swisscows.com"_L1, "/de/web"_L1, "query"_L1},
    Engine{"wikipedia.org"_L1, "/w/index.php"_L1, "search"_L1},
    Engine{"yahoo.com"_L1, "/search"_L1, "p"_L1, "search.yahoo.com"_L1},
    Engine{"yandex."_L1, "/search/"_L1, "text"_L1},
};

/// Whether `host` is that engine's: the name itself, "www." before it, and for a name that ends
/// in a dot any country's domain behind it ("de", "co.uk"). A longer name may be anybody's.
bool isHostOf(const Engine& engine, const QString& host)
{
    if (!engine.host.endsWith(u'.'))
        return host == engine.host || host.endsWith(u'.' + engine.host);
    const QString name = host.startsWith("www."_L1) ? host.mid(4) : host;
    return name.startsWith(engine.host) && name.mid(engine.host.size()).count(u'.') <= 1;
}

} // namespace

QUrl searchAddress(const QUrl& engine, const QString& query)
{
    const QString text = query.trimmed();
    const bool isWeb = engine.scheme() == "http"_L1 || engine.scheme() == "https"_L1;
    if (!engine.isValid() || !isWeb || engine.host().isEmpty() || text.isEmpty() ||
        text.size() > longestQuery)
        return {};
    QUrl address = engine;
    QString item = u"q"_s;
    for (const Engine& known : engines) {
        if (!isHostOf(known, engine.host()))
            continue;
        address.setPath(known.path);
        item = known.item;
        if (!known.answers.isEmpty())
            address.setHost(known.answers);
    }
    QUrlQuery items(address);
    items.removeAllQueryItems(item);
    items.addQueryItem(item, QString::fromLatin1(QUrl::toPercentEncoding(text)));
    address.setQuery(items);
    return address;
}
