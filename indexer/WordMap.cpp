#include "indexer/WordMap.h"

#include <cstring>
#include <new>
#include <utility>

#include <sys/mman.h>
#include <unistd.h>

namespace tallyvox::indexer {

namespace {

constexpr std::uint64_t k0 = 0xa0761d6478bd642full;
constexpr std::uint64_t k1 = 0xe7037ed1a0b428dbull;
constexpr std::size_t initialSlots = 1 << 14;
constexpr std::size_t arenaBlock = 1 << 20;
constexpr std::size_t releaseEvery = 1 << 16; // slots, 2 MB

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
inline void padded(std::string_view word, std::uint64_t out[2])
{
    const char* p = word.data();
    const std::size_t n = word.size();
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

inline std::uint64_t hashOf(std::string_view word, const std::uint64_t head[2])
{
    std::uint64_t h = mix(head[0] ^ k0, head[1] ^ k1 ^ word.size());
    for (std::size_t i = 16; i < word.size(); i += 16) {
        std::uint64_t block[2] = {0, 0};
        const std::size_t n = word.size() - i < 16 ? word.size() - i : 16;
        if (n == 16) {
            block[0] = load(word.data() + i);
            block[1] = load(word.data() + i + 8);
        } else {
            std::memcpy(block, word.data() + i, n);
        }
        h = mix(block[0] ^ k0 ^ h, block[1] ^ k1);
    }
    return h;
}

} // namespace

WordMap::SlotArray::SlotArray(std::size_t count) : m_bytes(count * sizeof(Slot))
{
    void* memory =
        ::mmap(nullptr, m_bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) {
        throw std::bad_alloc();
    }
    m_slots = static_cast<Slot*>(memory);
}

WordMap::SlotArray::~SlotArray()
{
    if (m_slots) {
        ::munmap(m_slots, m_bytes);
    }
}

void WordMap::SlotArray::swap(SlotArray& other) noexcept
{
    std::swap(m_slots, other.m_slots);
    std::swap(m_bytes, other.m_bytes);
    std::swap(m_released, other.m_released);
}

void WordMap::SlotArray::releaseBefore(std::size_t end)
{
    static const std::size_t page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t bytes = end * sizeof(Slot) / page * page;
    if (bytes > m_released) {
        ::madvise(reinterpret_cast<char*>(m_slots) + m_released, bytes - m_released, MADV_DONTNEED);
        m_released = bytes;
    }
}

WordMap::WordMap() : m_slots(initialSlots), m_mask(initialSlots - 1) {}

const char* WordMap::storeExternal(std::string_view word)
{
    if (word.size() > m_arenaLeft) {
        const std::size_t size = word.size() > arenaBlock ? word.size() : arenaBlock;
        m_arena.emplace_back(new char[size]);
        m_arenaNext = m_arena.back().get();
        m_arenaLeft = size;
    }
    char* key = m_arenaNext;
    std::memcpy(key, word.data(), word.size());
    m_arenaNext += word.size();
    m_arenaLeft -= word.size();
    return key;
}

void WordMap::add(std::string_view word, std::uint64_t count)
{
    if (word.empty()) {
        return;
    }
    std::uint64_t head[2];
    padded(word, head);
    insert(word, head, hashOf(word, head), count);
}

void WordMap::addBatch(const std::string_view* words, std::size_t n)
{
    // Hash and prefetch the whole batch before touching any slot, so that the cache misses
    // of a batch overlap instead of following one another.
    constexpr std::size_t batch = 64;
    std::uint64_t heads[batch][2];
    std::uint64_t hashes[batch];
    while (n > 0) {
        const std::size_t m = n < batch ? n : batch;
        for (std::size_t i = 0; i < m; ++i) {
            padded(words[i], heads[i]);
            hashes[i] = hashOf(words[i], heads[i]);
            __builtin_prefetch(&m_slots[hashes[i] & m_mask]);
        }
        for (std::size_t i = 0; i < m; ++i) {
            if (!words[i].empty()) {
                insert(words[i], heads[i], hashes[i], 1);
            }
        }
        words += m;
        n -= m;
    }
}

void WordMap::insert(std::string_view word, const std::uint64_t head[2], std::uint64_t hash,
                     std::uint64_t count)
{
    const auto tag = static_cast<std::uint32_t>(hash >> 32);
    const auto length = static_cast<std::uint32_t>(word.size());
    for (std::size_t i = hash & m_mask;; i = (i + 1) & m_mask) {
        Slot& slot = m_slots[i];
        if (slot.length == 0) {
            slot.tag = tag;
            slot.length = length;
            slot.count = count;
            if (length <= inlineCapacity) {
                slot.words[0] = head[0];
                slot.words[1] = head[1];
            } else {
                slot.external = storeExternal(word);
            }
            if (++m_size * 4 > (m_mask + 1) * 3) {
                grow();
            }
            return;
        }
        if (slot.tag != tag || slot.length != length) {
            continue;
        }
        if (length <= inlineCapacity ? (slot.words[0] == head[0] && slot.words[1] == head[1])
                                     : std::memcmp(slot.external, word.data(), length) == 0) {
            slot.count += count;
            return;
        }
    }
}

std::uint64_t WordMap::count(std::string_view word) const
{
    if (word.empty()) {
        return 0;
    }
    std::uint64_t head[2];
    padded(word, head);
    const std::uint64_t hash = hashOf(word, head);
    const auto tag = static_cast<std::uint32_t>(hash >> 32);
    for (std::size_t i = hash & m_mask;; i = (i + 1) & m_mask) {
        const Slot& slot = m_slots[i];
        if (slot.length == 0) {
            return 0;
        }
        if (slot.tag == tag && keyOf(slot) == word) {
            return slot.count;
        }
    }
}

void WordMap::grow()
{
    const std::size_t oldSize = m_mask + 1;
    SlotArray old = std::exchange(m_slots, SlotArray(oldSize * 2));
    m_mask = oldSize * 2 - 1;
    for (std::size_t j = 0; j < oldSize; ++j) {
        if (j % releaseEvery == 0) {
            old.releaseBefore(j);
        }
        const Slot& slot = old[j];
        if (slot.length == 0) {
            continue;
        }
        std::uint64_t head[2];
        const std::string_view key = keyOf(slot);
        padded(key, head);
        std::size_t i = hashOf(key, head) & m_mask;
        while (m_slots[i].length != 0) {
            i = (i + 1) & m_mask;
        }
        m_slots[i] = slot; // external keys stay where they are in the arena
    }
}

void WordMap::merge(WordMap&& other)
{
    // The other table's words arrive in its slot order, which is hash order: poured into a
    // smaller table they pile up into long probe runs. Make room for all of them first.
    while (m_mask < other.m_mask || (m_size + other.m_size) * 4 > (m_mask + 1) * 3) {
        grow();
    }
    for (std::size_t j = 0; j <= other.m_mask; ++j) {
        if (j % releaseEvery == 0) {
            other.m_slots.releaseBefore(j);
        }
        const Slot& slot = other.m_slots[j];
        if (slot.length != 0) {
            add(keyOf(slot), slot.count);
        }
    }
    other = WordMap();
}

} // namespace tallyvox::indexer
