#pragma once

#include "address/FilesAndDrives.h"

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

inline const FakeFileTable& disk()
{
    static const FakeFileTable files(
        QStringLiteral(
            "/home/|/home/u/|/home/u/a.htm|/home/u/a b.htm|/home/u/Ä.htm|/home/u/100%.htm|"
            "/home/u/c#1?.htm|/home/u/x%20y|/home/u/re\\al|/home/u/end |/opt/|"
            "/opt/Tessera/|/opt/Tessera/Lizenz.txt|/opt/Tessera/README|"
            "/opt/Tessera/Readme|/mnt/|/mnt/Stick/|/mnt/Stick/Liste.htm|/www.example.net")
            .split(u'|'));
    return files;
}

inline const DriveList& drives()
{
    static const DriveList list(
        {{QStringLiteral("/mnt/Stick"), QStringLiteral("Data"), QStringLiteral("vfat")}});
    return list;
}
