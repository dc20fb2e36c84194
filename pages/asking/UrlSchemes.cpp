#include "pages/asking/UrlSchemes.h"

#include <QSet>
#include <QUrl>

using namespace Qt::StringLiterals;

bool isForEngine(const QUrl& url)
{
    static const QSet<QString> shown{u"about"_s,
                                     u"blob"_s,
                                     u"chrome"_s,
                                     u"chrome-error"_s,
                                     u"data"_s,
                                     u"devtools"_s,
                                     u"chrome-extension"_s,
                                     u"chrome-untrusted"_s,
                                     u"file"_s,
                                     u"filesystem"_s,
                                     u"http"_s,
                                     u"https"_s,
                                     u"javascript"_s,
                                     u"view-source"_s};
    return shown.contains(url.scheme());
}

bool isScript(const QUrl& url)
{
    return url.scheme() == "javascript"_L1;
}

bool isForDesktop(const QUrl& url)
{
    // They lead to files, to the local network, or to programs that run what they get.
    static const QSet<QString> never{
        u"admin"_s,   u"afp"_s,      u"applications"_s,  u"burn"_s,    u"cdda"_s, u"computer"_s,
        u"content"_s, u"dav"_s,      u"davs"_s,          u"desktop"_s, u"fish"_s, u"ftp"_s,
        u"ftps"_s,    u"gphoto2"_s,  u"jar"_s,           u"ldap"_s,    u"mtp"_s,  u"network"_s,
        u"nfs"_s,     u"programs"_s, u"qrc"_s,           u"recent"_s,  u"sftp"_s, u"smb"_s,
        u"ssh"_s,     u"telnet"_s,   u"tessera-error"_s, u"trash"_s,   u"urn"_s,  u"vbscript"_s,
        u"ws"_s,      u"wss"_s};
    // A single letter is a drive, not a scheme.
    return url.isValid() && url.scheme().size() > 1 && !isForEngine(url) &&
           !never.contains(url.scheme());
}

bool isForNobody(const QUrl& url)
{
    return !url.scheme().isEmpty() && !isForEngine(url) && !isForDesktop(url);
}

bool canPageOpen(const QUrl& url, const QUrl& page)
{
    static const QSet<QString> ofAnyPage{u"about"_s, u"blob"_s,  u"filesystem"_s,
                                         u"http"_s,  u"https"_s, u"javascript"_s};
    return ofAnyPage.contains(url.scheme()) || isForDesktop(url) ||
           (url.isLocalFile() && page.isLocalFile());
}
