#include "indexer/WordMap.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

namespace tallyvox::indexer {

namespace {

// 32 KB: a short document fits without growing, and a file whose size is known is sized
// before its first word. Larger empty tables cost page faults to clear and to sort.
constexpr unsigned initialBits = 10;
constexpr std::size_t arenaBlock = 1 << 20;
constexpr std::size_t hugePage = 2u << 20;
constexpr std::size_t releaseEvery = hugePage / 32; // slots

} // namespace

WordShard::SlotArray::SlotArray(std::size_t count) : m_bytes(count * sizeof(Slot))
{
    // Large arrays start on a huge-page boundary and ask for huge pages: a lookup that
    // misses the cache then rarely misses the TLB too, and one fault maps 2 MB.
    // Smaller ones are filled in at once: their words, hashed all over them, touch nearly
    // every page soon, and one call maps them faster than a fault per page.
    const bool huge = m_bytes >= hugePage;
    const std::size_t mapped = huge ? m_bytes + hugePage : m_bytes;
    void* memory = ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE,
                          MAP_PRIVATE | MAP_ANONYMOUS | (huge ? 0 : MAP_POPULATE), -1, 0);
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    auto* start = static_cast<char*>(memory);
    if (huge) {
        const std::size_t skip =
            (hugePage - reinterpret_cast<std::uintptr_t>(start) % hugePage) % hugePage;
        if (skip > 0) {
            ::munmap(start, skip);
        }
        if (hugePage - skip > 0) {
            ::munmap(start + skip + m_bytes, hugePage - skip);
        }
        start += skip;
        ::madvise(start, m_bytes, MADV_HUGEPAGE);
    }
    m_slots = reinterpret_cast<Slot*>(start);
}

WordShard::SlotArray::~SlotArray()
{
    if (m_slots) {
        ::munmap(m_slots, m_bytes);
    }
}

bool WordShard::SlotArray::extend(std::size_t count)
{
    // Only huge arrays: moved into a huge-page mapping, the old pages keep their flags, and
    // the two parts merge into one mapping that the next growth can move whole.
    if (m_bytes < hugePage || count * sizeof(Slot) <= m_bytes || m_released > 0) {
        return false;
    }
    SlotArray larger(count);
    void* moved =
        ::mremap(m_slots, m_bytes, m_bytes, MREMAP_MAYMOVE | MREMAP_FIXED, larger.m_slots);
    if (moved == MAP_FAILED) {
        return false; // the old mapping is untouched; the larger one is unmapped
    }
    // The old range is gone: the slots now lie at the start of the larger mapping.
    m_slots = nullptr;
    m_bytes = 0;
    swap(larger);
    ::madvise(m_slots, m_bytes, MADV_HUGEPAGE);
    return true;
}

void WordShard::SlotArray::swap(SlotArray& other) noexcept
{
    std::swap(m_slots, other.m_slots);
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_released, other.m_released);
}

void WordShard::SlotArray::releaseFrom(std::size_t begin)
{
    static const std::size_t page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t from = (begin * sizeof(Slot) + page - 1) / page * page;
    if (from < m_bytes) {
        ::madvise(reinterpret_cast<char*>(m_slots) + from, m_bytes - from, MADV_DONTNEED);
    }
}

void WordShard::SlotArray::releaseBefore(std::size_t end)
{
    static const std::size_t page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t bytes = end * sizeof(Slot) / page * page;
    if (bytes > m_released) {
        ::madvise(reinterpret_cast<char*>(m_slots) + m_released, bytes - m_released, MADV_DONTNEED);
        m_released = bytes;
    }
}

WordShard::WordShard()
    : m_slots(std::size_t{1} << initialBits), m_mask((std::size_t{1} << initialBits) - 1),
      m_shift(32 - initialBits), m_limit((m_mask + 1) / 4 * 3)
{}

WordShard::~WordShard() = default;

void WordShard::reserve(std::size_t words)
{
    if (m_sorted) {
        unsort();
    }
    unsigned bits = 32 - m_shift;
    while (bits < 32 && (std::size_t{1} << bits) / 4 * 3 < words) {
        ++bits;
    }
    if (bits > 32 - m_shift) {
        growTo(bits);
    }
}

const char* WordShard::storeExternal(const HashedWord& word)
{
    if (word.size > m_arenaLeft) {
        const std::size_t size = word.size > arenaBlock ? word.size : arenaBlock;
        m_arena.emplace_back(new char[size]);
        m_arenaNext = m_arena.back().get();
        m_arenaLeft = size;
    }
    char* key = m_arenaNext;
    std::memcpy(key, word.data, word.size);
    m_arenaNext += word.size;
    m_arenaLeft -= word.size;
    return key;
}

void WordShard::addBatch(const HashedWord* words, std::size_t n)
{
    if (m_sorted && n > 0) {
        unsort();
    }
    constexpr std::size_t batch = 64;
    std::uint64_t heads[batch][2];
    while (n > 0) {
        const std::size_t m = n < batch ? n : batch;
        for (std::size_t i = 0; i < m; ++i) {
            prefetch(words[i].tag);
            detail::padded(words[i].data, words[i].size, heads[i]);
        }
        for (std::size_t i = 0; i < m; ++i) {
            if (words[i].size > 0) {
                insert(words[i], heads[i], 1);
            }
        }
        words += m;
        n -= m;
    }
}

void WordShard::insert(const HashedWord& word, const std::uint64_t head[2], std::uint64_t count)
{
    const std::uint32_t length = word.size;
    for (std::size_t i = word.tag >> m_shift;; i = (i + 1) & m_mask) {
        Slot& slot = m_slots[i];
        if (slot.length == 0) {
            slot.tag = word.tag;
            slot.length = length;
            slot.count = count;
            if (length <= inlineCapacity) {
                slot.words[0] = head[0];
                slot.words[1] = head[1];
            } else {
                slot.external = storeExternal(word);
            }
            if (++m_size > m_limit) {
                grow();
            }
            return;
        }
        if (slot.tag != word.tag || slot.length != length) {
            continue;
        }
        if (length <= inlineCapacity ? (slot.words[0] == head[0] && slot.words[1] == head[1])
                                     : std::memcmp(slot.external, word.data, length) == 0) {
            slot.count += count;
            return;
        }
    }
}

std::uint64_t WordShard::count(std::string_view word, const WordKey& key) const
{
    if (word.empty()) {
        return 0;
    }
    if (m_sorted) {
        std::size_t low = 0;
        std::size_t high = m_size;
        while (low < high) {
            const std::size_t middle = low + (high - low) / 2;
            const int order = compareUtf16Order(keyOf(m_slots[middle]), word);
            if (order == 0) {
                return m_slots[middle].count;
            }
            if (order < 0) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        return 0;
    }
    const auto tag = static_cast<std::uint32_t>(key.hash >> 32);
    for (std::size_t i = tag >> m_shift;; i = (i + 1) & m_mask) {
        const Slot& slot = m_slots[i];
        if (slot.length == 0) {
            return 0;
        }
        if (slot.tag == tag && keyOf(slot) == word) {
            return slot.count;
        }
    }
}

void WordShard::grow()
{
    if (m_shift == 0) {
        throw std::length_error("word table full");
    }
    growTo(33 - m_shift);
}

void WordShard::growTo(unsigned bits)
{
    const std::size_t oldSize = m_mask + 1;
    if (m_slots.extend(std::size_t{1} << bits)) {
        m_mask = (std::size_t{1} << bits) - 1;
        m_shift = 32 - bits;
        m_limit = (m_mask + 1) / 4 * 3;
        spreadInPlace(oldSize);
        return;
    }
    // Homes come from the tags' top bits, so the old slots, read in order, fill the new
    // array nearly in order too: two streams through memory, no hashing.
    SlotArray old = std::exchange(m_slots, SlotArray(std::size_t{1} << bits));
    m_mask = (std::size_t{1} << bits) - 1;
    m_shift = 32 - bits;
    m_limit = (m_mask + 1) / 4 * 3;
    for (std::size_t j = 0; j < oldSize && m_size > 0; ++j) {
        if (j % releaseEvery == 0) {
            old.releaseBefore(j);
        }
        const Slot& slot = old[j];
        if (slot.length == 0) {
            continue;
        }
        std::size_t i = slot.tag >> m_shift;
        while (m_slots[i].length != 0) {
            i = (i + 1) & m_mask;
        }
        m_slots[i] = slot; // external keys stay where they are in the arena
    }
}

void WordShard::spreadInPlace(std::size_t oldSize)
{
    // The old slots lie in the front of the grown array, whose homes are now at least twice
    // as far out. Taken from the back, each word's new home is at or after its old place,
    // where only words already moved or empty slots lie, so probing from it never passes a
    // slot that will be emptied later. The few that would start before their place (near the
    // front) or wrap around to the front are held back and placed once the rest is done.
    std::vector<Slot> heldBack;
    for (std::size_t j = oldSize; j-- > 0;) {
        Slot& slot = m_slots[j];
        if (slot.length == 0) {
            continue;
        }
        const Slot moving = slot;
        slot = Slot{};
        std::size_t i = moving.tag >> m_shift;
        while (i >= j && i <= m_mask && m_slots[i].length != 0) {
            ++i;
        }
        if (i < j || i > m_mask) {
            heldBack.push_back(moving);
            continue;
        }
        m_slots[i] = moving;
    }
    for (const Slot& slot : heldBack) {
        std::size_t i = slot.tag >> m_shift;
        while (m_slots[i].length != 0) {
            i = (i + 1) & m_mask;
        }
        m_slots[i] = slot;
    }
}

void WordShard::sort()
{
    if (m_sorted) {
        return;
    }
    // Pack the words to the front, in slot order, and give back the pages behind them.
    std::size_t n = 0;
    for (std::size_t i = 0; i <= m_mask; ++i) {
        if (m_slots[i].length != 0) {
            m_slots[n++] = m_slots[i];
        }
    }
    m_slots.releaseFrom(n);
    sortSlots(&m_slots[0], n, 0);
    m_sorted = true;
}

namespace {

constexpr std::array<unsigned char, 256> makeOrderBytes()
{
    std::array<unsigned char, 256> bytes{};
    for (unsigned b = 0; b < 256; ++b) {
        bytes[b] = static_cast<unsigned char>(utf16OrderByte(static_cast<unsigned char>(b)));
    }
    return bytes;
}

constexpr std::array<unsigned char, 256> orderBytes = makeOrderBytes();

} // namespace

unsigned WordShard::orderByte(const Slot& slot, std::size_t depth)
{
    // 0 past the word's end, which sorts a word before its extensions (words hold no zero).
    if (depth >= slot.length) {
        return 0;
    }
    // A longer key's bytes come from its copy of the 8 at depth's multiple of 8, which
    // sortSlots keeps in the slot (cacheBytes), not from the key far away in memory.
    if (slot.length <= inlineCapacity) {
        return orderBytes[reinterpret_cast<const unsigned char*>(slot.words)[depth]];
    }
    unsigned char cached[8];
    std::memcpy(cached, &slot.words[1], sizeof cached);
    return orderBytes[cached[depth % 8]];
}

void WordShard::cacheBytes(Slot* slots, std::size_t n, std::size_t depth)
{
    // The slot's second word is free while its key lies elsewhere; n-gram keys are long and
    // share their starts, so without it every byte of the sort is a cache miss.
    for (std::size_t i = 0; i < n; ++i) {
        Slot& slot = slots[i];
        if (slot.length <= inlineCapacity || depth >= slot.length) {
            continue;
        }
        std::uint64_t bytes = 0;
        std::memcpy(&bytes, slot.external + depth, std::min<std::size_t>(8, slot.length - depth));
        slot.words[1] = bytes;
    }
}

WordShard::ByteRange WordShard::countBytes(const Slot* slots, std::size_t n, std::size_t depth,
                                           std::size_t count[256])
{
    ByteRange range{255, 0};
    for (std::size_t i = 0; i < n; ++i) {
        const unsigned b = orderByte(slots[i], depth);
        ++count[b];
        range.low = std::min(range.low, b);
        range.high = std::max(range.high, b);
    }
    return range;
}

void WordShard::distribute(Slot* slots, std::size_t depth, ByteRange range,
                           const std::size_t count[256], std::size_t start[256])
{
    // Each slot is swapped straight into its bucket's next free place (American flag sort).
    std::size_t next[256];
    std::size_t at = 0;
    for (unsigned b = range.low; b <= range.high; ++b) {
        start[b] = next[b] = at;
        at += count[b];
    }
    for (unsigned b = range.low; b <= range.high; ++b) {
        const std::size_t end = start[b] + count[b];
        while (next[b] < end) {
            const unsigned target = orderByte(slots[next[b]], depth);
            if (target == b) {
                ++next[b];
            } else {
                std::swap(slots[next[b]], slots[next[target]++]);
            }
        }
    }
}

void WordShard::sortSlots(Slot* slots, std::size_t n, std::size_t depth)
{
    // MSD radix sort in place: distribute by the byte at depth, then sort each bucket by the
    // next byte; small buckets by comparison. The largest bucket is handled by the loop
    // rather than by recursion, which bounds the depth of recursion by log n whatever the
    // words.
    while (n >= 24) {
        if (depth % 8 == 0) {
            cacheBytes(slots, n, depth);
        }
        std::size_t count[256] = {};
        const ByteRange range = countBytes(slots, n, depth, count);
        if (range.low == range.high) {
            ++depth; // one bucket holds them all: nothing to move at this depth
            continue;
        }
        std::size_t start[256];
        distribute(slots, depth, range, count, start);
        // Bucket 0 holds words that end here: one at most, as words are distinct.
        const unsigned first = std::max(range.low, 1u);
        unsigned largest = first;
        for (unsigned b = first; b <= range.high; ++b) {
            largest = count[b] > count[largest] ? b : largest;
        }
        for (unsigned b = first; b <= range.high; ++b) {
            if (b != largest && count[b] > 1) {
                sortSlots(slots + start[b], count[b], depth + 1);
            }
        }
        slots += start[largest];
        n = count[largest];
        ++depth;
    }
    std::sort(slots, slots + n, [depth](const Slot& a, const Slot& b) {
        return compareUtf16Order(keyOf(a).substr(depth), keyOf(b).substr(depth)) < 0;
    });
}

void WordShard::unsort()
{
    // Back to a hash table: the slots keep their tags, so nothing is hashed again.
    const std::size_t n = m_size;
    SlotArray packed = std::exchange(m_slots, SlotArray(m_mask + 1));
    m_sorted = false;
    for (std::size_t j = 0; j < n; ++j) {
        const Slot& slot = packed[j];
        std::size_t i = slot.tag >> m_shift;
        while (m_slots[i].length != 0) {
            i = (i + 1) & m_mask;
        }
        m_slots[i] = slot;
    }
}

WordMap::WordMap(unsigned shards) : m_shards(shards), m_mask(shards - 1) {}

void WordMap::add(std::string_view word, std::uint64_t count)
{
    if (word.empty()) {
        return;
    }
    const WordKey key = keyOf(word);
    m_shards[shardOf(key.hash)].add({word.data(), static_cast<std::uint32_t>(word.size()),
                                     static_cast<std::uint32_t>(key.hash >> 32)},
                                    key.head, count);
}

void WordMap::merge(WordMap&& other)
{
    other.forEach([this](std::string_view word, std::uint64_t n) { add(word, n); });
    other = WordMap(other.shardCount());
}

std::size_t WordMap::size() const
{
    std::size_t total = 0;
    for (const WordShard& shard : m_shards) {
        total += shard.size();
    }
    return total;
}

std::uint64_t WordMap::count(std::string_view word) const
{
    const WordKey key = keyOf(word);
    return m_shards[shardOf(key.hash)].count(word, key);
}

void WordMap::sort()
{
    for (WordShard& shard : m_shards) {
        shard.sort();
    }
}

} // namespace tallyvox::indexer
