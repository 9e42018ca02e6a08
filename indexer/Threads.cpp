#include "indexer/Threads.h"

#include <sched.h>

#include <cerrno>
#include <cstdlib>

namespace tallyvox::indexer {

unsigned allowedThreads(unsigned fallback)
{
    const char* value = std::getenv("TALLYVOX_INDEXER_THREADS");
    if (!value || *value < '0' || *value > '9') {
        return fallback; // unset, empty, signed or not a number
    }
    char* end = nullptr;
    errno = 0;
    const unsigned long threads = std::strtoul(value, &end, 10);
    // More than a thousand is no cap anyone meant; it is read as a mistake, like zero.
    if (errno != 0 || *end != '\0' || threads == 0 || threads > 1024) {
        return fallback;
    }
    return static_cast<unsigned>(threads);
}

unsigned availableCores()
{
    cpu_set_t cores;
    CPU_ZERO(&cores);
    if (::sched_getaffinity(0, sizeof cores, &cores) != 0) {
        return 1;
    }
    const int count = CPU_COUNT(&cores);
    return count > 0 ? static_cast<unsigned>(count) : 1;
}

} // namespace tallyvox::indexer
