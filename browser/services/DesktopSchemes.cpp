#include "browser/services/DesktopSchemes.h"

#include <QStringList>
#include <QUrl>

using namespace Qt::StringLiterals;

bool isForDesktop(const QUrl& url)
{
    static const QStringList never{u"about"_s,
                                   u"blob"_s,
                                   u"chrome"_s,
                                   u"chrome-error"_s,
                                   u"chrome-extension"_s,
                                   u"chrome-untrusted"_s,
                                   u"content"_s,
                                   u"data"_s,
                                   u"devtools"_s,
                                   u"file"_s,
                                   u"filesystem"_s,
                                   u"ftp"_s,
                                   u"http"_s,
                                   u"https"_s,
                                   u"jar"_s,
                                   u"javascript"_s,
                                   u"qrc"_s,
                                   u"tessera-error"_s,
                                   u"urn"_s,
                                   u"vbscript"_s,
                                   u"view-source"_s,
                                   u"ws"_s,
                                   u"wss"_s};
    // A single letter is a drive, not a scheme.
    return url.isValid() && url.scheme().size() > 1 && !never.contains(url.scheme());
}
