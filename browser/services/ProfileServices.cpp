#include "browser/services/ProfileServices.h"

#include "browser/services/Notices.h"

#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>

ProfileServices::ProfileServices(Shell& /*shell*/, QWebEngineProfile& profile)
{
    new Notices(profile, this);
    // Nothing is written to the disk that nobody has asked the user about.
    connect(&profile, &QWebEngineProfile::downloadRequested, this,
            [](QWebEngineDownloadRequest* download) { download->cancel(); });
}
