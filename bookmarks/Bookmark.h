#pragma once

#include "base/KeyedCollection.h"

#include <QString>

#include <memory>

/// One stored link of a folder.
class Bookmark {
public:
    /// Kept for whoever sets it; never written to a file.
    void Order(qint16 value) { m_order = value; }
    qint16 Order() const { return m_order; }
    /// The user's description; its line breaks are CR LF.
    void Info(const QString& value) { m_info = value; }
    const QString& Info() const { return m_info; }
    void Url(const QString& value) { m_url = value; }
    const QString& Url() const { return m_url; }
    void Titel(const QString& value) { m_titel = value; }
    const QString& Titel() const { return m_titel; }
    /// The number inside the folder, part of the bookmark's key.
    void Nr(qint16 value) { m_nr = value; }
    qint16 Nr() const { return m_nr; }

private:
    QString m_info;
    QString m_url;
    QString m_titel;
    qint16 m_order = 0;
    qint16 m_nr = 0;
};

/// The bookmarks of a folder in display order.
using BookmarkCollection = KeyedCollection<std::shared_ptr<Bookmark>>;
