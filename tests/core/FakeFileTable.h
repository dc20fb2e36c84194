#pragma once

#include "browser/FileTable.h"

#include <utility>

/// A file system made of a list of paths; folders end in "/".
class FakeFileTable : public FileTable {
public:
    explicit FakeFileTable(QStringList paths) : m_paths(std::move(paths)) {}

    bool exists(const QString& path) const override
    {
        return m_paths.contains(path) || isFolder(path);
    }
    bool isFolder(const QString& path) const override
    {
        return path == QStringLiteral("/") || m_paths.contains(path + u'/');
    }
    QStringList entries(const QString& folder) const override
    {
        QStringList names;
        const QString prefix = folder.endsWith(u'/') ? folder : folder + u'/';
        for (const QString& path : m_paths) {
            const QString name = path.startsWith(prefix) ? path.sliced(prefix.size()) : QString();
            if (!name.isEmpty() && name.count(u'/') == (name.endsWith(u'/') ? 1 : 0))
                names << name.section(u'/', 0, 0);
        }
        return names;
    }

private:
    QStringList m_paths;
};
