#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace tallyvox::indexer {

/// The standardised type/token ratio's counts: the text, in reading order, cut into runs of
/// runLength words; for each full run, how many distinct words it holds. The last run, cut
/// short by the end of the text, is left out. Words are told apart by their 64-bit hashes,
/// which a run of a thousand words never sees collide in practice.
class TypeRuns {
public:
    static constexpr std::size_t runLength = 1000;

    TypeRuns() : m_slots(new Slot[slotCount]()) {}

    /// The next word of the text, by its hash.
    void add(std::uint64_t hash)
    {
        for (std::size_t i = hash & (slotCount - 1);; i = (i + 1) & (slotCount - 1)) {
            Slot& slot = m_slots[i];
            if (slot.run != m_run) {
                slot = {hash, m_run};
                ++m_types;
                break;
            }
            if (slot.hash == hash) {
                break;
            }
        }
        if (++m_words == runLength) {
            m_typesSum += m_types;
            ++m_runs;
            m_types = 0;
            m_words = 0;
            ++m_run; // every slot is free again, without clearing any
        }
    }

    /// The distinct words of the full runs, added up, and how many full runs there were.
    std::uint64_t typesSum() const { return m_typesSum; }
    std::uint64_t runs() const { return m_runs; }

private:
    struct Slot {
        std::uint64_t hash;
        std::uint32_t run; // the run that holds the slot; runs are numbered from 1
    };
    // At most half full, so that probes stay short.
    static constexpr std::size_t slotCount = 2048;

    std::unique_ptr<Slot[]> m_slots;
    std::uint32_t m_run = 1;
    std::size_t m_words = 0;
    std::size_t m_types = 0;
    std::uint64_t m_typesSum = 0;
    std::uint64_t m_runs = 0;
};

} // namespace tallyvox::indexer
