#include "base/SiteIcons.h"

#include <QPainter>
#include <QPixmap>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype longestAddress = 2000;

/// The same for all ways to write the address of a page; empty for what is not remembered.
QString keyOf(const QString& address)
{
    if (address.isEmpty() || address.size() > longestAddress)
        return {};
    const bool hasScheme = address.contains("://"_L1) || address.startsWith("file:"_L1);
    QUrl url(hasScheme ? address : u"http://"_s + address);
    if (url.scheme() == "https"_L1)
        url.setScheme(u"http"_s);
    if (url.path().isEmpty())
        url.setPath(u"/"_s);
    const bool hasPlace = !url.host().isEmpty() || url.isLocalFile();
    return hasPlace ? url.toString(QUrl::FullyEncoded | QUrl::RemoveFragment) : QString();
}

} // namespace

QIcon onTile(const QIcon& given)
{
    QIcon shown;
    if (given.isNull())
        return shown;
    for (const int side : {16, 20, 32}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.drawRoundedRect(picture.rect(), side / 8.0, side / 8.0);
        const int edge = side / 16;
        const QRect inside = picture.rect().adjusted(edge, edge, -edge, -edge);
        const QPixmap icon = given.pixmap(QSize(side, side), 1.0);
        QRect place(QPoint(), icon.size().scaled(inside.size(), Qt::KeepAspectRatio));
        place.moveCenter(inside.center());
        painter.drawPixmap(place, icon);
        painter.end();
        shown.addPixmap(picture);
    }
    return shown;
}

void SiteIcons::remember(const QString& address, const QIcon& icon)
{
    const QString key = keyOf(address);
    if (key.isEmpty() || icon.isNull())
        return;
    m_icons.insert(key, new QIcon(icon));
    emit changed();
}

QIcon SiteIcons::icon(const QString& address) const
{
    const QIcon* const known = m_icons.isEmpty() ? nullptr : m_icons.object(keyOf(address));
    return known == nullptr ? QIcon() : *known;
}
