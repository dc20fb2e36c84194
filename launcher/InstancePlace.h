#pragma once

#include <string>
#include <vector>

/// The folder in which the copies of one user find each other, whatever folder
/// each was started from.
struct InstanceFolder {
    /// Without trailing separator; empty when no folder is usable.
    std::string path;
    /// Why no folder is usable, in German, for the user.
    std::string error;

    std::string lockPath() const { return path + "/tessera.lock"; }
    std::string socketPath() const { return path + "/tessera.socket"; }
};

struct FolderCandidates {
    /// Runtime folders that the system made for this user, best first.
    std::vector<std::string> runtime;
    /// A private folder that is created when none of them is usable.
    std::string fallback;
};

/// What the environment offers. Copies with and without XDG_RUNTIME_DIR (a
/// desktop and a console of the same user) are to end up in the same folder.
FolderCandidates folderCandidates();

/// Chooses a folder that belongs to this user, into which this user can write
/// and nobody else. The fallback folder has to be closed to others altogether.
InstanceFolder instanceFolder(const FolderCandidates& candidates);

/// The lock that makes its holder the user's one running copy. The kernel keeps
/// it, so it ends with the process however that ends; the file itself stays.
class InstanceLock {
public:
    enum class State { Held, Busy, Failed };

    InstanceLock() = default;
    InstanceLock(InstanceLock&& other) noexcept;
    InstanceLock& operator=(InstanceLock&& other) noexcept;
    InstanceLock(const InstanceLock&) = delete;
    InstanceLock& operator=(const InstanceLock&) = delete;
    ~InstanceLock();

    /// Tries once, without waiting. `Failed`: the file cannot be used, errno says why.
    State acquire(const std::string& path);
    bool held() const { return m_file >= 0; }
    /// Lets go of the lock.
    void release();
    /// Has the process hold the lock until it has ended, whatever becomes of this object: so
    /// nobody takes the place of a copy that is still tidying up.
    void keep() { m_file = -1; }

private:
    int m_file = -1;
};
