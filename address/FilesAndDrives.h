#pragma once

#include <QByteArray>
#include <QChar>
#include <QString>
#include <QStringList>

#include <vector>

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

/// What the address rules ask of the drives.
class DriveTable {
public:
    DriveTable() = default;
    virtual ~DriveTable() = default;

    /// The absolute path of the folder that stands behind a drive letter (in
    /// either case); empty when there is no such drive.
    virtual QString rootOf(QChar letter) const = 0;

protected:
    DriveTable(const DriveTable&) = default;
    DriveTable& operator=(const DriveTable&) = default;
};

/// One mounted volume.
struct Volume {
    QString root;       ///< absolute path of its folder
    QString name;       ///< label; empty when it has none
    QString fileSystem; ///< type, as "ext4" or "fuse.sshfs"
};

/// The machine's drives: the root first, then the mounted volumes in the order
/// given, with letters from C: on. What is no storage of the user's (pseudo file
/// systems, images of installed packages) gets no letter, the root always does.
/// Volumes beyond Z: are left out.
class DriveList : public DriveTable {
public:
    explicit DriveList(const std::vector<Volume>& volumes);

    /// "C: [NAME]" in upper case, one entry a drive. A volume without a label
    /// goes by the name of its folder.
    QStringList entries() const;
    QString rootOf(QChar letter) const override;

private:
    struct Drive {
        QString root;
        QString name;
    };
    std::vector<Drive> m_drives;
};

/// The drives mounted now. Asks every volume for its state, so a network volume
/// whose server is gone can make it wait.
DriveList mountedDrives();

/// The same for many windows: asks the volumes again only when others are mounted.
class RememberedDrives {
public:
    QStringList entries();

private:
    QByteArray m_mounts;
    QStringList m_entries;
};

/// The machine's drives as they are when a letter is asked for.
class MountedDrives : public DriveTable {
public:
    QString rootOf(QChar letter) const override { return mountedDrives().rootOf(letter); }
};
