#include "launcher/InstancePlace.h"

#include "base/SystemReason.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <utility>

namespace {

enum class Links { Follow, Refuse };

// Why the folder cannot be used, or an empty text.
std::string objection(const std::string& path, mode_t forbidden, Links links)
{
    struct stat info = {};
    const int flags = links == Links::Refuse ? AT_SYMLINK_NOFOLLOW : 0;
    if (::fstatat(AT_FDCWD, path.c_str(), &info, flags) != 0)
        return systemReason(errno);
    if (!S_ISDIR(info.st_mode))
        return "kein Ordner";
    if (info.st_uid != ::geteuid())
        return "gehört einem anderen Benutzer";
    if ((info.st_mode & forbidden) != 0)
        return "ist für andere Benutzer zugänglich";
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK | X_OK, AT_EACCESS) != 0)
        return systemReason(errno);
    if (InstanceFolder{path, {}}.socketPath().size() >= sizeof(sockaddr_un::sun_path))
        return "der Name ist zu lang";
    return {};
}

// Another start locks a new file when the one that is open here was removed meanwhile.
bool isStillInPlace(int file, const std::string& path)
{
    struct stat opened = {};
    struct stat named = {};
    return ::fstat(file, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

} // namespace

FolderCandidates folderCandidates()
{
    const std::string user = std::to_string(::geteuid());
    FolderCandidates candidates;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && runtime[0] == '/')
        candidates.runtime.emplace_back(runtime);
    candidates.runtime.push_back("/run/user/" + user);
    candidates.fallback = "/tmp/tessera-" + user;
    return candidates;
}

InstanceFolder instanceFolder(const FolderCandidates& candidates)
{
    for (const std::string& path : candidates.runtime)
        if (objection(path, S_IWGRP | S_IWOTH, Links::Follow).empty())
            return {path, {}};
    ::mkdir(candidates.fallback.c_str(), S_IRWXU);
    const std::string reason = objection(candidates.fallback, S_IRWXG | S_IRWXO, Links::Refuse);
    if (reason.empty())
        return {candidates.fallback, {}};
    return {{}, "Der Ordner '" + candidates.fallback + "' ist nicht nutzbar: " + reason};
}

InstanceLock::InstanceLock(InstanceLock&& other) noexcept : m_file(std::exchange(other.m_file, -1))
{
}

InstanceLock& InstanceLock::operator=(InstanceLock&& other) noexcept
{
    std::swap(m_file, other.m_file);
    return *this;
}

InstanceLock::~InstanceLock()
{
    release();
}

InstanceLock::State InstanceLock::acquire(const std::string& path)
{
    const int file =
        ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, S_IRUSR | S_IWUSR);
    if (file < 0)
        return State::Failed;
    if (::flock(file, LOCK_EX | LOCK_NB) != 0) {
        const int reason = errno;
        ::close(file);
        errno = reason;
        return reason == EWOULDBLOCK || reason == EINTR ? State::Busy : State::Failed;
    }
    if (!isStillInPlace(file, path)) {
        ::close(file);
        return State::Busy;
    }
    // The sticky bit keeps clean-ups of old files in the runtime folder away.
    ::fchmod(file, S_ISVTX | S_IRUSR | S_IWUSR);
    release();
    m_file = file;
    return State::Held;
}

void InstanceLock::release()
{
    if (held())
        ::close(std::exchange(m_file, -1));
}
