#pragma once

#include "indexer/Utf16Order.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace tallyvox::indexer {

/// A word as the scanners hand it on: where it is, and the high half of its hash, which
/// places it in a table and tells most other words apart without touching their bytes.
struct HashedWord {
    const char* data;
    std::uint32_t size;
    std::uint32_t tag;
};

namespace detail {

constexpr std::uint64_t k0 = 0xa0761d6478bd642full;
constexpr std::uint64_t k1 = 0xe7037ed1a0b428dbull;

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

} // namespace detail

/// The word's first 16 bytes, zero-padded (the key of a short word as a table keeps it), and
/// its 64-bit hash.
struct WordKey {
    std::uint64_t head[2];
    std::uint64_t hash;
};

inline WordKey keyOf(std::string_view word)
{
    WordKey key{};
    detail::padded(word.data(), word.size(), key.head);
    key.hash = detail::hashOf(word.data(), word.size(), key.head);
    return key;
}

/// Word -> count for the words whose hash falls to it: one of a WordMap's shards. Open
/// addressing with linear probing; words of up to 16 bytes live inside their 32-byte slot,
/// so a lookup of a common word touches one cache line. Longer words go to an arena.
/// A word's home slot is given by the top bits of its hash, which the slot keeps: doubling
/// the table moves the words in order into the new slots without hashing any again.
/// Slots live in their own anonymous mapping, in huge pages once they are large: fresh
/// pages come zeroed (empty), and a lookup rarely misses the TLB. A large table grows where
/// it is: only the added pages are fresh, which the kernel must clear.
class WordShard {
public:
    WordShard();
    WordShard(WordShard&&) noexcept = default;
    WordShard& operator=(WordShard&&) noexcept = default;
    WordShard(const WordShard&) = delete;
    WordShard& operator=(const WordShard&) = delete;
    ~WordShard();

    /// Makes room for this many words at once, rather than doubling again and again.
    void reserve(std::size_t words);

    void add(const HashedWord& word, const std::uint64_t head[2], std::uint64_t count)
    {
        if (m_sorted) {
            unsort();
        }
        // Most words are found in their home slot: decide that here, probe on elsewhere.
        Slot& home = m_slots[word.tag >> m_shift];
        if (home.tag == word.tag && home.length == word.size && word.size <= inlineCapacity &&
            home.words[0] == head[0] && home.words[1] == head[1]) {
            home.count += count;
        } else if (word.size > 0) {
            insert(word, head, count);
        }
    }
    /// Adds one occurrence of each word. The slots of the whole batch are fetched from
    /// memory before any is touched, so that the cache misses overlap.
    void addBatch(const HashedWord* words, std::size_t n);
    /// Starts fetching the slot where a word with this tag would be.
    void prefetch(std::uint32_t tag) const { __builtin_prefetch(&m_slots[tag >> m_shift]); }

    std::size_t size() const { return m_size; }
    /// How many words fit before the shard grows.
    std::size_t capacity() const { return m_limit; }
    std::uint64_t count(std::string_view word, const WordKey& key) const;

    /// Calls f(std::string_view word, std::uint64_t count) for every word, in slot order.
    template <typename F>
    void forEach(F&& f) const
    {
        for (std::size_t i = 0; i < (m_sorted ? m_size : m_mask + 1); ++i) {
            const Slot& slot = m_slots[i];
            if (slot.length != 0) {
                f(keyOf(slot), slot.count);
            }
        }
    }

    /// Puts the words in UTF-16 code-unit order (see Utf16Order.h), for entry(): the slots
    /// are packed to the front of the table and sorted where they are, so that the words can
    /// then be read in order as one stream. Adding a word afterwards rebuilds the table.
    void sort();
    bool isSorted() const { return m_sorted; }
    /// The i-th word in order after sort(), with its count.
    struct Entry {
        std::string_view word;
        std::uint64_t count;
    };
    Entry entry(std::size_t i) const { return {keyOf(m_slots[i]), m_slots[i].count}; }
    /// The i-th word's first eight bytes after sort(), as utf16OrderPrefix gives them.
    std::uint64_t orderPrefix(std::size_t i) const
    {
        // A slot's key has at least eight readable bytes: zero-padded inline, or longer.
        const Slot& slot = m_slots[i];
        std::uint64_t v;
        std::memcpy(&v,
                    slot.length <= inlineCapacity ? reinterpret_cast<const char*>(slot.words)
                                                  : slot.external,
                    8);
        v = __builtin_bswap64(v);
        if (slot.length < 8) {
            v &= ~std::uint64_t{0} << (8 * (8 - slot.length));
        }
        return (v & 0x8080808080808080ull) == 0 ? v : remapOrderPrefix(v);
    }

private:
    static constexpr std::size_t inlineCapacity = 16;
    struct Slot {
        std::uint32_t tag;
        std::uint32_t length; // 0 marks an empty slot: words are never empty
        std::uint64_t count;
        union {
            std::uint64_t words[2]; // the inline key, zero-padded
            const char* external;
        };
    };
    static_assert(sizeof(Slot) == 32);

    static std::string_view keyOf(const Slot& slot)
    {
        return slot.length <= inlineCapacity
                   ? std::string_view(reinterpret_cast<const char*>(slot.words), slot.length)
                   : std::string_view(slot.external, slot.length);
    }
    void insert(const HashedWord& word, const std::uint64_t head[2], std::uint64_t count);
    const char* storeExternal(const HashedWord& word);
    void grow();
    void growTo(unsigned bits);
    void spreadInPlace(std::size_t oldSize);
    void unsort();
    struct ByteRange {
        unsigned low;
        unsigned high;
    };
    static void sortSlots(Slot* slots, std::size_t n, std::size_t depth);
    static unsigned orderByte(const Slot& slot, std::size_t depth);
    /// Copies the 8 bytes at depth (a multiple of 8) of each key kept elsewhere into its slot.
    static void cacheBytes(Slot* slots, std::size_t n, std::size_t depth);
    static ByteRange countBytes(const Slot* slots, std::size_t n, std::size_t depth,
                                std::size_t count[256]);
    static void distribute(Slot* slots, std::size_t depth, ByteRange range,
                           const std::size_t count[256], std::size_t start[256]);

    // Zeroed slots in pages of their own.
    class SlotArray {
    public:
        SlotArray() = default;
        explicit SlotArray(std::size_t count);
        SlotArray(SlotArray&& other) noexcept { swap(other); }
        SlotArray& operator=(SlotArray&& other) noexcept
        {
            swap(other);
            return *this;
        }
        SlotArray(const SlotArray&) = delete;
        SlotArray& operator=(const SlotArray&) = delete;
        ~SlotArray();
        Slot& operator[](std::size_t i) const { return m_slots[i]; }
        /// Makes the array count slots long, keeping its slots at the front and the rest
        /// empty, by moving its pages rather than copying them. False when it cannot (a small
        /// array, or the kernel refused), and the array is as it was.
        bool extend(std::size_t count);
        /// Gives back the whole pages of slots [0, end); they read as empty afterwards.
        void releaseBefore(std::size_t end);
        /// Gives back the whole pages from slot begin on; they read as empty afterwards.
        void releaseFrom(std::size_t begin);

    private:
        void swap(SlotArray& other) noexcept;
        Slot* m_slots = nullptr;
        std::size_t m_bytes = 0;
        std::size_t m_released = 0;
    };

    SlotArray m_slots;
    std::size_t m_mask = 0;
    unsigned m_shift = 0; // home slot = tag >> m_shift
    std::size_t m_size = 0;
    std::size_t m_limit = 0; // grow past this many words
    std::vector<std::unique_ptr<char[]>> m_arena;
    std::size_t m_arenaLeft = 0;
    char* m_arenaNext = nullptr;
    bool m_sorted = false; // the words are packed in order at the front, not hashed
};

/// Word -> count, the table of one document. The words are split between shards by their
/// hash, so that each counting thread can own one shard and every word lives in one table:
/// nothing is merged at the end, and memory follows the number of distinct words.
class WordMap {
public:
    /// shards must be a power of two.
    explicit WordMap(unsigned shards = 1);

    void add(std::string_view word, std::uint64_t count = 1);
    /// Adds other's words and empties it.
    void merge(WordMap&& other);
    std::size_t size() const;
    std::uint64_t count(std::string_view word) const;

    unsigned shardCount() const { return static_cast<unsigned>(m_shards.size()); }
    /// The shard a word of this hash belongs to.
    unsigned shardOf(std::uint64_t hash) const { return static_cast<unsigned>(hash) & m_mask; }
    WordShard& shard(unsigned i) { return m_shards[i]; }
    const WordShard& shard(unsigned i) const { return m_shards[i]; }

    /// Calls f(std::string_view word, std::uint64_t count) for every word, in no set order.
    template <typename F>
    void forEach(F&& f) const
    {
        for (const WordShard& shard : m_shards) {
            shard.forEach(f);
        }
    }

    /// Sorts every shard (see WordShard::sort); forEachInOrder is fastest after it.
    void sort();
    /// Calls f(std::string_view word, std::uint64_t count) for every word, in UTF-16
    /// code-unit order. Shards that are not sorted yet are sorted on a copy first.
    template <typename F>
    void forEachInOrder(F&& f) const;

private:
    std::vector<WordShard> m_shards;
    unsigned m_mask;
};

template <typename F>
void WordMap::forEachInOrder(F&& f) const
{
    // Shards hold disjoint words: merging their orders is the whole job.
    std::vector<WordShard> copies;
    std::vector<const WordShard*> shards;
    for (const WordShard& shard : m_shards) {
        if (shard.isSorted()) {
            shards.push_back(&shard);
            continue;
        }
        WordShard& copy = copies.emplace_back();
        shard.forEach([&copy](std::string_view word, std::uint64_t n) {
            const WordKey key = keyOf(word);
            const HashedWord hashed{word.data(), static_cast<std::uint32_t>(word.size()),
                                    static_cast<std::uint32_t>(key.hash >> 32)};
            copy.add(hashed, key.head, n);
        });
        copy.sort();
    }
    // The copies vector no longer grows: pointers into it stay valid.
    for (WordShard& copy : copies) {
        shards.push_back(&copy);
    }
    // Each cursor keeps its word's order prefix, so most steps compare two numbers.
    struct Cursor {
        const WordShard* shard;
        std::size_t next;
        std::uint64_t prefix;
    };
    std::vector<Cursor> cursors;
    for (const WordShard* shard : shards) {
        if (shard->size() > 0) {
            cursors.push_back({shard, 0, shard->orderPrefix(0)});
        }
    }
    while (!cursors.empty()) {
        std::size_t best = 0;
        for (std::size_t c = 1; c < cursors.size(); ++c) {
            if (cursors[c].prefix < cursors[best].prefix ||
                (cursors[c].prefix == cursors[best].prefix &&
                 compareUtf16Order(cursors[c].shard->entry(cursors[c].next).word,
                                   cursors[best].shard->entry(cursors[best].next).word) < 0)) {
                best = c;
            }
        }
        Cursor& cursor = cursors[best];
        const WordShard::Entry entry = cursor.shard->entry(cursor.next);
        f(entry.word, entry.count);
        if (++cursor.next < cursor.shard->size()) {
            cursor.prefix = cursor.shard->orderPrefix(cursor.next);
        } else {
            cursors.erase(cursors.begin() + static_cast<std::ptrdiff_t>(best));
        }
    }
}

} // namespace tallyvox::indexer
