#pragma once

#include <string>

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
    /// Keeps the lock until the process has ended, past the end of this object:
    /// nobody takes the place while the program is still tidying up.
    void keepUntilExit() { m_file = -1; }

private:
    int m_file = -1;
};
