#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tallyvox::indexer::readers {

/// Collects the limits that cut a document short while it is read, so that the indexer can
/// say so. A reader notes a cut where it happens (deep inside a parser callback, a zip
/// stream or a page loop) without a report being passed through every layer in between:
/// the innermost live CutReport of the thread receives it.
class CutReport {
public:
    CutReport();
    ~CutReport();
    CutReport(const CutReport&) = delete;
    CutReport& operator=(const CutReport&) = delete;

    /// Notes a cut with the current report of this thread, if any; each reason once.
    static void note(std::string_view reason);

    /// The reasons noted, in the order they first came.
    const std::vector<std::string>& reasons() const { return m_reasons; }

private:
    CutReport* m_outer;
    std::vector<std::string> m_reasons;
};

} // namespace tallyvox::indexer::readers
