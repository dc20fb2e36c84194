#include "address/FilesAndDrives.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {
/// The toolkit warns about paths that no file system can hold.
bool canBePath(const QString& path)
{
    return path.startsWith(u'/') && !path.contains(QChar(0));
}

constexpr char16_t firstLetter = u'C';
constexpr std::size_t mostDrives = u'Z' - firstLetter + 1;

bool isPseudo(const QString& fileSystem)
{
    static const QStringList pseudo{
        u"autofs"_s,      u"binfmt_misc"_s, u"bpf"_s,        u"cgroup"_s,          u"cgroup2"_s,
        u"configfs"_s,    u"debugfs"_s,     u"devpts"_s,     u"devtmpfs"_s,        u"efivarfs"_s,
        u"fuse.portal"_s, u"fusectl"_s,     u"hugetlbfs"_s,  u"fuse.gvfsd-fuse"_s, u"mqueue"_s,
        u"nsfs"_s,        u"overlay"_s,     u"proc"_s,       u"pstore"_s,          u"ramfs"_s,
        u"rootfs"_s,      u"rpc_pipefs"_s,  u"securityfs"_s, u"fuse.snapfuse"_s,   u"squashfs"_s,
        u"sysfs"_s,       u"tmpfs"_s,       u"tracefs"_s};
    return pseudo.contains(fileSystem);
}

/// A label is shown in a menu of one line an entry.
QString shownName(const Volume& volume)
{
    QString label = volume.name.simplified();
    if (!label.isEmpty())
        return label;
    const QString folder = volume.root.section(u'/', -1).simplified();
    return folder.isEmpty() ? u"/"_s : folder;
}
} // namespace

bool LinuxFileTable::exists(const QString& path) const
{
    if (!canBePath(path))
        return false;
    const QFileInfo info(path);
    return info.isSymLink() || info.exists();
}

bool LinuxFileTable::isFolder(const QString& path) const
{
    return canBePath(path) && QFileInfo(path).isDir();
}

QStringList LinuxFileTable::entries(const QString& folder) const
{
    if (!canBePath(folder))
        return {};
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Unsorted);
}

DriveList::DriveList(const std::vector<Volume>& volumes)
{
    m_drives.push_back({u"/"_s, u"/"_s});
    for (const Volume& volume : volumes) {
        const QString root = QDir::cleanPath(volume.root);
        const auto known = std::find_if(m_drives.begin(), m_drives.end(),
                                        [&root](const Drive& drive) { return drive.root == root; });
        if (known != m_drives.end()) // the volume that was mounted last hides the one below
            known->name = shownName({root, volume.name, {}});
        else if (root.startsWith(u'/') && !isPseudo(volume.fileSystem) &&
                 m_drives.size() < mostDrives)
            m_drives.push_back({root, shownName({root, volume.name, {}})});
    }
}

QStringList DriveList::entries() const
{
    QStringList all;
    char16_t letter = firstLetter;
    for (const Drive& drive : m_drives)
        all << (QChar(letter++) + u": ["_s + drive.name + u']').toUpper();
    return all;
}

QString DriveList::rootOf(QChar letter) const
{
    const char16_t upper = letter.toUpper().unicode();
    if (upper < firstLetter || static_cast<std::size_t>(upper - firstLetter) >= m_drives.size())
        return {};
    return m_drives[static_cast<std::size_t>(upper - firstLetter)].root;
}

DriveList mountedDrives()
{
    std::vector<Volume> volumes;
    for (const QStorageInfo& storage : QStorageInfo::mountedVolumes()) {
        // In containers single files are mounted, too.
        if (QFileInfo(storage.rootPath()).isDir())
            volumes.push_back({storage.rootPath(), storage.name(),
                               QString::fromLatin1(storage.fileSystemType())});
    }
    return DriveList(volumes);
}

QStringList RememberedDrives::entries()
{
    QFile table(u"/proc/self/mountinfo"_s);
    const QByteArray mounts = table.open(QIODevice::ReadOnly) ? table.readAll() : QByteArray();
    if (mounts.isEmpty() || mounts != m_mounts)
        m_entries = mountedDrives().entries();
    m_mounts = mounts;
    return m_entries;
}
