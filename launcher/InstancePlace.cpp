#include "launcher/InstancePlace.h"

#include "base/SystemReason.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

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
