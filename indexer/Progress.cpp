#include "indexer/Progress.h"

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace tallyvox::indexer::progress {

namespace {

using Clock = std::chrono::steady_clock;

// TALLYVOX_PROGRESS_MS sets the time between reports, and before the first; tests set 0.
std::chrono::milliseconds reportInterval()
{
    const char* value = std::getenv("TALLYVOX_PROGRESS_MS");
    char* end = nullptr;
    const long milliseconds = value ? std::strtol(value, &end, 10) : -1;
    return value && *value && *end == '\0' && milliseconds >= 0
               ? std::chrono::milliseconds(milliseconds)
               : std::chrono::milliseconds(250);
}

const Clock::rep interval = std::chrono::duration_cast<Clock::duration>(reportInterval()).count();

// Readers call from one thread at a time, but the counting threads may too; relaxed
// atomics keep the figures whole without ordering anything else.
std::atomic<std::uint64_t> total{0};
std::atomic<std::uint64_t> done{0};
std::atomic<Clock::rep> nextReport{Clock::now().time_since_epoch().count() + interval};

void reportWhenDue()
{
    const Clock::rep now = Clock::now().time_since_epoch().count();
    Clock::rep due = nextReport.load(std::memory_order_relaxed);
    if (now < due ||
        !nextReport.compare_exchange_strong(due, now + interval, std::memory_order_relaxed)) {
        return;
    }
    char line[64];
    const int length = std::snprintf(line, sizeof line, "progress %llu %llu\n",
                                     static_cast<unsigned long long>(done.load()),
                                     static_cast<unsigned long long>(total.load()));
    // One write, unbuffered: a page reader's child shares the descriptor. A failed write
    // (nobody listening) is no reason to stop indexing, so its result is not looked at.
    if (length > 0) {
        [[maybe_unused]] const ssize_t written =
            ::write(STDOUT_FILENO, line, static_cast<std::size_t>(length));
    }
}

} // namespace

void setShare(std::uint64_t part, std::uint64_t whole)
{
    if (whole > 0) {
        setRead(static_cast<std::uint64_t>(static_cast<double>(total.load()) *
                                           static_cast<double>(part) / static_cast<double>(whole)));
    }
}

void restart()
{
    done.store(0, std::memory_order_relaxed);
    nextReport.store(Clock::now().time_since_epoch().count() + interval, std::memory_order_relaxed);
}

void setTotal(std::uint64_t bytes)
{
    total.store(bytes, std::memory_order_relaxed);
}

void setRead(std::uint64_t bytes)
{
    done.store(bytes, std::memory_order_relaxed);
    reportWhenDue();
}

} // namespace tallyvox::indexer::progress
