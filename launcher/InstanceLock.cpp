#include "launcher/InstanceLock.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

// A file that was removed meanwhile locks nobody else out.
bool isStillInPlace(int file, const std::string& path)
{
    struct stat opened = {};
    struct stat named = {};
    return ::fstat(file, &opened) == 0 && ::lstat(path.c_str(), &named) == 0 &&
           opened.st_ino == named.st_ino && opened.st_dev == named.st_dev;
}

} // namespace

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
