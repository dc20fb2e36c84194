#include "pages/viewing/SiteZooms.h"

#include "pages/viewing/ZoomSteps.h"

using namespace Qt::StringLiterals;

QString SiteZooms::siteOf(const QUrl& url)
{
    if (!url.host().isEmpty() && !url.isLocalFile())
        return url.host();
    const QString scheme = url.scheme();
    if (scheme == "view-source"_L1 || scheme == "blob"_L1)
        return siteOf(QUrl(url.path()));
    return scheme + u':';
}

int SiteZooms::percentOf(const QString& site) const
{
    return m_percents.value(site, normalZoom);
}

void SiteZooms::set(const QString& site, int percent)
{
    if (percent == normalZoom)
        m_percents.remove(site);
    else
        m_percents.insert(site, percent);
    emit changed(site);
}
