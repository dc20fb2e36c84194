#pragma once

#include <QCache>
#include <QIcon>
#include <QObject>

/// The icon that a site has given itself as the program shows it: on a white tile, which keeps
/// dark icons legible on dark colours. It leaves the edge of the tile free, so that a site can
/// imitate no mark of the program's, which reach over it. `given` is null where there is none,
/// and so is the result then.
QIcon onTile(const QIcon& given);

/// The icons of the pages that were shown in this run, by their addresses. They are in memory
/// only, and the oldest give way.
class SiteIcons : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// `icon` is one by `onTile`. A null one changes nothing: it may come a little later.
    void remember(const QString& address, const QIcon& icon);
    /// Null for a page that is not known. The scheme of a web address does not matter, and it
    /// may be missing, nor does the fragment.
    QIcon icon(const QString& address) const;

signals:
    void changed();

private:
    static constexpr int most = 2000;
    QCache<QString, QIcon> m_icons{most};
};
