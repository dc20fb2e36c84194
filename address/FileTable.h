#pragma once

#include <QString>
#include <QStringList>

/// What the address rules ask of the file system. Paths are absolute, with "/"
/// between the names; one behind the last name is allowed where that is a folder.
/// Nothing here throws: what cannot be read is not there.
class FileTable {
public:
    FileTable() = default;
    FileTable(const FileTable&) = delete;
    FileTable& operator=(const FileTable&) = delete;
    virtual ~FileTable() = default;

    /// Whether there is such a name, be it a file, a folder or a link, even one
    /// that leads nowhere.
    virtual bool exists(const QString& path) const = 0;
    virtual bool isFolder(const QString& path) const = 0;
    /// The names in a folder, hidden ones too, in no particular order.
    virtual QStringList entries(const QString& folder) const = 0;
};

/// The machine's own file system.
class LinuxFileTable : public FileTable {
public:
    bool exists(const QString& path) const override;
    bool isFolder(const QString& path) const override;
    QStringList entries(const QString& folder) const override;
};
