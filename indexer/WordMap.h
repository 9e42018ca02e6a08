#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace tallyvox::indexer {

/// Word -> count, built for a few hundred thousand distinct words looked up tens of millions
/// of times. Open addressing with linear probing; keys of up to 16 bytes live inside their
/// slot, so a lookup of a common word touches one cache line. Longer keys go to an arena.
/// Slots live in their own anonymous mapping: fresh pages come zeroed (empty) without a
/// pass over them, and pages already moved out of during a rehash or merge are returned.
class WordMap {
public:
    WordMap();
    WordMap(WordMap&&) noexcept = default;
    WordMap& operator=(WordMap&&) noexcept = default;
    WordMap(const WordMap&) = delete;
    WordMap& operator=(const WordMap&) = delete;

    void add(std::string_view word, std::uint64_t count = 1);
    /// Adds one occurrence of each word. Faster than one add() at a time on a large table:
    /// the slots of the whole batch are fetched from memory together.
    void addBatch(const std::string_view* words, std::size_t n);
    /// Adds other's words and empties it, giving its memory back as it goes, so that the
    /// two tables of a merge never need much more than their own size together.
    void merge(WordMap&& other);
    std::size_t size() const { return m_size; }
    std::uint64_t count(std::string_view word) const;

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
    void insert(std::string_view word, const std::uint64_t head[2], std::uint64_t hash,
                std::uint64_t count);
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

    const char* storeExternal(std::string_view word);
    void grow();

    SlotArray m_slots;
    std::size_t m_mask = 0;
    std::size_t m_size = 0;
    std::vector<std::unique_ptr<char[]>> m_arena;
    std::size_t m_arenaLeft = 0;
    char* m_arenaNext = nullptr;
};

} // namespace tallyvox::indexer
