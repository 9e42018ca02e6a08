#include "indexer/WordMap.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

namespace tallyvox::indexer {

namespace {

constexpr unsigned initialBits = 14;
constexpr std::size_t arenaBlock = 1 << 20;
constexpr std::size_t hugePage = 2u << 20;
constexpr std::size_t releaseEvery = hugePage / 32; // slots

} // namespace

WordShard::SlotArray::SlotArray(std::size_t count) : m_bytes(count * sizeof(Slot))
{
    // Large arrays start on a huge-page boundary and ask for huge pages: a lookup that
    // misses the cache then rarely misses the TLB too, and one fault maps 2 MB.
    const bool huge = m_bytes >= hugePage;
    const std::size_t mapped = huge ? m_bytes + hugePage : m_bytes;
    void* memory =
        ::mmap(nullptr, mapped, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
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

void WordShard::SlotArray::swap(SlotArray& other) noexcept
{
    std::swap(m_slots, other.m_slots);
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_released, other.m_released);
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
    unsigned bits = 32 - m_shift;
    while (bits < 32 && (std::size_t{1} << bits) / 4 * 3 < words) {
        ++bits;
    }
    if (m_size > 0 || bits == 32 - m_shift) {
        return;
    }
    m_slots = SlotArray(std::size_t{1} << bits);
    m_mask = (std::size_t{1} << bits) - 1;
    m_shift = 32 - bits;
    m_limit = (m_mask + 1) / 4 * 3;
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
    // Homes come from the tags' top bits, so the old slots, read in order, fill the new
    // array nearly in order too: two streams through memory, no hashing.
    const std::size_t oldSize = m_mask + 1;
    SlotArray old = std::exchange(m_slots, SlotArray(oldSize * 2));
    m_mask = oldSize * 2 - 1;
    --m_shift;
    m_limit = (m_mask + 1) / 4 * 3;
    for (std::size_t j = 0; j < oldSize; ++j) {
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
    m_order.clear();
    m_sortedSize = 0;
}

void WordShard::sort()
{
    std::vector<Ordered> order;
    order.reserve(m_size);
    for (std::size_t i = 0; i <= m_mask; ++i) {
        const Slot& slot = m_slots[i];
        if (slot.length != 0) {
            order.push_back({utf16OrderPrefix(keyOf(slot)), static_cast<std::uint32_t>(i)});
        }
    }
    // Radix sort on the eight-byte prefixes, a byte a pass from the last, skipping bytes that
    // all entries share; then only words that share their first eight bytes are compared.
    std::size_t counts[8][256] = {};
    for (const Ordered& entry : order) {
        for (unsigned digit = 0; digit < 8; ++digit) {
            ++counts[digit][(entry.prefix >> (8 * digit)) & 0xFF];
        }
    }
    std::vector<Ordered> other(order.size());
    for (unsigned digit = 0; digit < 8 && !order.empty(); ++digit) {
        std::size_t* count = counts[digit];
        if (count[(order[0].prefix >> (8 * digit)) & 0xFF] == order.size()) {
            continue;
        }
        std::size_t start = 0;
        for (unsigned byte = 0; byte < 256; ++byte) {
            start += std::exchange(count[byte], start);
        }
        for (const Ordered& entry : order) {
            other[count[(entry.prefix >> (8 * digit)) & 0xFF]++] = entry;
        }
        order.swap(other);
    }
    for (std::size_t i = 0; i < order.size();) {
        std::size_t j = i + 1;
        while (j < order.size() && order[j].prefix == order[i].prefix) {
            ++j;
        }
        if (j - i > 1) {
            std::sort(order.begin() + static_cast<std::ptrdiff_t>(i),
                      order.begin() + static_cast<std::ptrdiff_t>(j),
                      [this](const Ordered& a, const Ordered& b) {
                          return compareUtf16Order(keyOf(m_slots[a.slot]), keyOf(m_slots[b.slot])) <
                                 0;
                      });
        }
        i = j;
    }
    m_order = std::move(order);
    m_sortedSize = m_size;
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
