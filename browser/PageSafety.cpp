#include "browser/PageSafety.h"

#include <QHostAddress>

using namespace Qt::StringLiterals;

namespace {

/// The source of a page has come as the page itself.
QUrl withoutSource(const QUrl& url)
{
    const QString prefix = u"view-source:"_s;
    return url.scheme() + u':' == prefix ? QUrl(url.toString().mid(prefix.size())) : url;
}

bool isSameSite(const QUrl& one, const QUrl& other)
{
    return one.scheme() == other.scheme() && one.host() == other.host() &&
           one.port(443) == other.port(443);
}

/// Names of this computer that the engine asks no name server for, and its own addresses.
bool isLoopback(const QString& host)
{
    return host == "localhost"_L1 || host.endsWith(".localhost"_L1) ||
           QHostAddress(host).isLoopback();
}

PageSafety::Kind encrypted(const PageOrigin& page)
{
    // Until the document has said the same address, a page of the engine's about an error may
    // stand there, or the page before.
    if (!isSameSite(withoutSource(page.shown), withoutSource(page.reported)))
        return PageSafety::Kind::Unknown;
    switch (page.exception) {
    case PageOrigin::Exception::Allowed:
        return PageSafety::Kind::SecuredByException;
    case PageOrigin::Exception::TakenBack:
        return PageSafety::Kind::NotSecured;
    case PageOrigin::Exception::None:
        break;
    }
    return PageSafety::Kind::Secured;
}

} // namespace

PageSafety::Kind safetyOf(const PageOrigin& page)
{
    const QUrl url = withoutSource(page.shown);
    const QString scheme = url.scheme();
    if (page.reported.scheme() == "chrome-error"_L1)
        return PageSafety::Kind::Unknown;
    if (scheme == "https"_L1)
        return encrypted(page);
    // What a server on this computer sends cannot be read on its way; another user of the
    // computer may run that server, so it is not called secured.
    if (scheme == "http"_L1)
        return isLoopback(url.host()) ? PageSafety::Kind::Local : PageSafety::Kind::NotSecured;
    if (scheme == "file"_L1)
        return url.host().isEmpty() ? PageSafety::Kind::Local : PageSafety::Kind::NotSecured;
    // A page of this program's own has its content as a data address.
    if (scheme == "data"_L1 && page.reported.scheme() == "tessera-error"_L1)
        return PageSafety::Kind::Local;
    if (scheme == "data"_L1 || scheme == "blob"_L1 || scheme == "filesystem"_L1)
        return PageSafety::Kind::NotSecured;
    return PageSafety::Kind::Unknown;
}

QString safetyName(PageSafety::Kind kind)
{
    switch (kind) {
    case PageSafety::Kind::Secured:
        return u"Gesichert"_s;
    case PageSafety::Kind::SecuredByException:
        return u"Gesichert durch Ihre Ausnahme"_s;
    case PageSafety::Kind::NotSecured:
        return u"Nicht gesichert"_s;
    case PageSafety::Kind::Local:
        return u"Auf diesem Rechner"_s;
    case PageSafety::Kind::Unknown:
        break;
    }
    return u"Keine Angabe"_s;
}

QString safetySentence(const PageSafety& safety)
{
    switch (safety.kind) {
    case PageSafety::Kind::Secured:
        return u"Die Verbindung ist verschlüsselt, und der Server hat nachgewiesen, dass er der "
               "richtige ist."_s;
    case PageSafety::Kind::SecuredByException:
        return u"Die Verbindung ist verschlüsselt, aber der Server kann nicht nachweisen, dass er "
               "der richtige ist. Sie haben ihn trotzdem zugelassen."_s;
    case PageSafety::Kind::NotSecured:
        if (safety.isTakenBack)
            return u"Sie haben die Ausnahme für diesen Server zurückgenommen. Von ihm wird nichts "
                   "mehr geladen; beim nächsten Öffnen fragt Tessera wieder."_s;
        return safety.hasServer ? u"Andere könnten mitlesen und verändern, was übertragen wird."_s
                                : u"Die Seite kommt von keinem Server, der für sie bürgt."_s;
    case PageSafety::Kind::Local:
        return safety.hasServer
                   ? u"Die Seite kommt von einem Programm auf diesem Rechner; die Verbindung "
                     "verlässt ihn nicht."_s
                   : u"Was Sie sehen, kommt von diesem Rechner und nicht aus dem Netz."_s;
    case PageSafety::Kind::Unknown:
        break;
    }
    return u"Es ist keine Seite da, sie lädt noch, oder über ihre Herkunft ist nichts bekannt."_s;
}
