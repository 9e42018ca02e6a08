#pragma once

#include "indexer/Utf16Order.h"

#include <cstddef>
#include <cstdint>
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

/// The word's first 16 bytes, zero-padded (the key of a short word as a table keeps it), and
/// its 64-bit hash.
struct WordKey {
    std::uint64_t head[2];
    std::uint64_t hash;
};
WordKey keyOf(std::string_view word);

/// Word -> count for the words whose hash falls to it: one of a WordMap's shards. Open
/// addressing with linear probing; words of up to 16 bytes live inside their 32-byte slot,
/// so a lookup of a common word touches one cache line. Longer words go to an arena.
/// A word's home slot is given by the top bits of its hash, which the slot keeps: doubling
/// the table moves the words in order into the new slots without hashing any again.
/// Slots live in their own anonymous mapping, in huge pages once they are large: fresh
/// pages come zeroed (empty), and a lookup rarely misses the TLB.
class WordShard {
public:
    WordShard();
    WordShard(WordShard&&) noexcept = default;
    WordShard& operator=(WordShard&&) noexcept = default;
    WordShard(const WordShard&) = delete;
    WordShard& operator=(const WordShard&) = delete;
    ~WordShard();

    /// Makes room for about this many words at once, while the shard is still empty.
    void reserve(std::size_t words);

    void add(const HashedWord& word, const std::uint64_t head[2], std::uint64_t count);
    /// Adds one occurrence of each word. The slots of the whole batch are fetched from
    /// memory before any is touched, so that the cache misses overlap.
    void addBatch(const HashedWord* words, std::size_t n);
    /// Starts fetching the slot where a word with this tag would be.
    void prefetch(std::uint32_t tag) const { __builtin_prefetch(&m_slots[tag >> m_shift]); }

    std::size_t size() const { return m_size; }
    std::uint64_t count(std::string_view word, const WordKey& key) const;

    /// Calls f(std::string_view word, std::uint64_t count) for every word, in slot order.
    template <typename F>
    void forEach(F&& f) const
    {
        for (std::size_t i = 0; i <= m_mask; ++i) {
            const Slot& slot = m_slots[i];
            if (slot.length != 0) {
                f(keyOf(slot), slot.count);
            }
        }
    }

    /// Puts the words in UTF-16 code-unit order (see Utf16Order.h), for entry(). Words added
    /// afterwards are not in that order until sort() is called again.
    void sort();
    bool isSorted() const { return m_sortedSize == m_size; }
    /// The i-th word in order after sort(), with its count and order prefix.
    struct Entry {
        std::string_view word;
        std::uint64_t count;
        std::uint64_t prefix;
    };
    Entry entry(std::size_t i) const
    {
        const Slot& slot = m_slots[m_order[i].slot];
        return {keyOf(slot), slot.count, m_order[i].prefix};
    }
    /// Starts fetching the slot of the i-th word in order.
    void prefetchEntry(std::size_t i) const { __builtin_prefetch(&m_slots[m_order[i].slot]); }

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
    struct Ordered {
        std::uint64_t prefix;
        std::size_t slot;
    };

    static std::string_view keyOf(const Slot& slot)
    {
        return slot.length <= inlineCapacity
                   ? std::string_view(reinterpret_cast<const char*>(slot.words), slot.length)
                   : std::string_view(slot.external, slot.length);
    }
    void insert(const HashedWord& word, const std::uint64_t head[2], std::uint64_t count);
    const char* storeExternal(const HashedWord& word);
    void grow();

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
        /// Gives back the whole pages of slots [0, end); they read as empty afterwards.
        void releaseBefore(std::size_t end);

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
    std::vector<Ordered> m_order;
    std::size_t m_sortedSize = 0;
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
    std::vector<std::size_t> next(shards.size(), 0);
    for (;;) {
        int best = -1;
        WordShard::Entry bestEntry{};
        for (std::size_t s = 0; s < shards.size(); ++s) {
            if (next[s] == shards[s]->size()) {
                continue;
            }
            const WordShard::Entry candidate = shards[s]->entry(next[s]);
            if (best < 0 || candidate.prefix < bestEntry.prefix ||
                (candidate.prefix == bestEntry.prefix &&
                 compareUtf16Order(candidate.word, bestEntry.word) < 0)) {
                best = static_cast<int>(s);
                bestEntry = candidate;
            }
        }
        if (best < 0) {
            return;
        }
        if (next[best] + 8 < shards[best]->size()) {
            shards[best]->prefetchEntry(next[best] + 8);
        }
        ++next[best];
        f(bestEntry.word, bestEntry.count);
    }
}

} // namespace tallyvox::indexer
