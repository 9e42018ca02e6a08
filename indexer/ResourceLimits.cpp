#include "indexer/ResourceLimits.h"

#include <sys/resource.h>

#include <algorithm>

// The sanitizers' shadow memory needs far more address space than the cap allows.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define TALLYVOX_ASAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TALLYVOX_ASAN 1
#endif
#endif

namespace tallyvox::indexer {

namespace {

bool lower(int resource, rlim_t soft, rlim_t hard)
{
    rlimit current{};
    if (getrlimit(resource, &current) != 0) {
        return false;
    }
    rlimit wanted{};
    wanted.rlim_max = current.rlim_max == RLIM_INFINITY ? hard : std::min(current.rlim_max, hard);
    wanted.rlim_cur = std::min(
        {soft, wanted.rlim_max, current.rlim_cur == RLIM_INFINITY ? soft : current.rlim_cur});
    return setrlimit(resource, &wanted) == 0;
}

} // namespace

ResourceCaps capsForInput(std::uint64_t bytes)
{
    constexpr std::uint64_t gib = std::uint64_t{1} << 30;
    constexpr std::uint64_t secondsPerGib = 60;
    ResourceCaps caps;
    caps.cpuSeconds += bytes / gib * secondsPerGib;
    return caps;
}

bool applyResourceCaps(const ResourceCaps& caps)
{
    // The hard CPU limit sits a little above the soft one: SIGXCPU first, SIGKILL if ignored.
    bool ok = lower(RLIMIT_CPU, caps.cpuSeconds, caps.cpuSeconds + 10);
    ok = lower(RLIMIT_CORE, 0, 0) && ok;
#ifndef TALLYVOX_ASAN
    ok = lower(RLIMIT_AS, caps.addressSpaceBytes, caps.addressSpaceBytes) && ok;
#endif
    return ok;
}

} // namespace tallyvox::indexer
