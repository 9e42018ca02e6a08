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

constexpr std::uint64_t k0 = 0xa0761d6478bd642full;
constexpr std::uint64_t k1 = 0xe7037ed1a0b428dbull;
constexpr unsigned initialBits = 14;
constexpr std::size_t arenaBlock = 1 << 20;
constexpr std::size_t hugePage = 2u << 20;
constexpr std::size_t releaseEvery = hugePage / 32; // slots

// Multiply-fold mixing: one 128-bit multiplication spreads every input bit over the result.
__extension__ typedef unsigned __int128 Wide;

inline std::uint64_t mix(std::uint64_t a, std::uint64_t b)
{
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

inline std::uint64_t load(const char* p)
{
    std::uint64_t v;
    std::memcpy(&v, p, 8);
    return v;
}

inline std::uint32_t load32(const char* p)
{
    std::uint32_t v;
    std::memcpy(&v, p, 4);
    return v;
}

// The key's first 16 bytes, zero-padded: the inline form of a short key. Built from a few
// overlapping loads rather than a byte copy, which would stall the loads that follow it.
inline void padded(const char* p, std::size_t n, std::uint64_t out[2])
{
    if (n >= 16) {
        out[0] = load(p);
        out[1] = load(p + 8);
    } else if (n >= 8) {
        out[0] = load(p);
        out[1] = n == 8 ? 0 : load(p + n - 8) >> (8 * (16 - n));
    } else if (n >= 4) {
        const std::uint64_t tail = load32(p + n - 4); // bytes n-4 .. n-1
        out[0] = load32(p) | ((tail >> (8 * (8 - n))) << 32);
        out[1] = 0;
    } else if (n > 0) {
        const auto byte = [p](std::size_t i) {
            return static_cast<std::uint64_t>(static_cast<unsigned char>(p[i]));
        };
        out[0] = byte(0) | (byte(n / 2) << (8 * (n / 2))) | (byte(n - 1) << (8 * (n - 1)));
        out[1] = 0;
    } else {
        out[0] = out[1] = 0;
    }
}

inline std::uint64_t hashOf(const char* p, std::size_t n, const std::uint64_t head[2])
{
    std::uint64_t h = mix(head[0] ^ k0, head[1] ^ k1 ^ n);
    for (std::size_t i = 16; i < n; i += 16) {
        std::uint64_t block[2] = {0, 0};
        const std::size_t m = n - i < 16 ? n - i : 16;
        if (m == 16) {
            block[0] = load(p + i);
            block[1] = load(p + i + 8);
        } else {
            std::memcpy(block, p + i, m);
        }
        h = mix(block[0] ^ k0 ^ h, block[1] ^ k1);
    }
    return h;
}

} // namespace

WordKey keyOf(std::string_view word)
{
    WordKey key{};
    padded(word.data(), word.size(), key.head);
    key.hash = hashOf(word.data(), word.size(), key.head);
    return key;
}

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

void WordShard::add(const HashedWord& word, const std::uint64_t head[2], std::uint64_t count)
{
    if (word.size > 0) {
        insert(word, head, count);
    }
}

void WordShard::addBatch(const HashedWord* words, std::size_t n)
{
    constexpr std::size_t batch = 64;
    std::uint64_t heads[batch][2];
    while (n > 0) {
        const std::size_t m = n < batch ? n : batch;
        for (std::size_t i = 0; i < m; ++i) {
            prefetch(words[i].tag);
            padded(words[i].data, words[i].size, heads[i]);
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
    m_order.clear();
    m_order.reserve(m_size);
    for (std::size_t i = 0; i <= m_mask; ++i) {
        const Slot& slot = m_slots[i];
        if (slot.length != 0) {
            m_order.push_back({utf16OrderPrefix(keyOf(slot)), i});
        }
    }
    std::sort(m_order.begin(), m_order.end(), [this](const Ordered& a, const Ordered& b) {
        if (a.prefix != b.prefix) {
            return a.prefix < b.prefix;
        }
        return compareUtf16Order(keyOf(m_slots[a.slot]), keyOf(m_slots[b.slot])) < 0;
    });
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
