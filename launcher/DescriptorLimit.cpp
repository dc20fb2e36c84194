#include "launcher/DescriptorLimit.h"

#include <algorithm>
#include <filesystem>
#include <sys/resource.h>

namespace {

// Some programs close all descriptors that they might have before they start another one.
// Where the limit is a thousand millions, as it may be, that would take them long.
constexpr rlim_t mostDescriptors = 524288;

rlimit limitOfDescriptors()
{
    rlimit limit = {};
    ::getrlimit(RLIMIT_NOFILE, &limit);
    return limit;
}

} // namespace

std::size_t raiseDescriptorLimit()
{
    rlimit limit = limitOfDescriptors();
    const rlim_t wanted = std::min(limit.rlim_max, mostDescriptors);
    if (wanted > limit.rlim_cur) {
        limit.rlim_cur = wanted;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
    return limitOfDescriptors().rlim_cur;
}

std::size_t freeDescriptors()
{
    std::error_code unknown;
    std::size_t open = 0;
    std::filesystem::directory_iterator entry("/proc/self/fd", unknown);
    for (; !unknown && entry != std::filesystem::directory_iterator(); entry.increment(unknown))
        ++open;
    // The list cannot be opened when no descriptor is left.
    const std::size_t limit = unknown ? 0 : limitOfDescriptors().rlim_cur;
    return limit - std::min(limit, open);
}
