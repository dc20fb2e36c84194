#pragma once

#include <QHash>
#include <QObject>
#include <QUrl>

/// How large the user wants to see the pages of each site, in percent, for one run of the
/// program. All windows of a site share its size.
class SiteZooms : public QObject {
    Q_OBJECT
public:
    /// What the pages that share a size have in common: the host, whatever its port and
    /// scheme. Addresses without a host share one size per scheme. All local files do: links
    /// between them lead from folder to folder, and the size would change at every other one.
    /// The source of a page, and what it has made itself ("blob:"), belong to its site.
    static QString siteOf(const QUrl& url);

    int percentOf(const QString& site) const;
    void set(const QString& site, int percent);

signals:
    void changed(const QString& site);

private:
    /// Only what differs from the normal size.
    QHash<QString, int> m_percents;
};
