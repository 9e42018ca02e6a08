#include "indexer/readers/CutReport.h"

#include <algorithm>

namespace tallyvox::indexer::readers {

namespace {

thread_local CutReport* current = nullptr;

} // namespace

CutReport::CutReport() : m_outer(current)
{
    current = this;
}

CutReport::~CutReport()
{
    current = m_outer;
}

void CutReport::note(std::string_view reason)
{
    if (current == nullptr) {
        return;
    }
    auto& reasons = current->m_reasons;
    if (std::find(reasons.begin(), reasons.end(), reason) == reasons.end()) {
        reasons.emplace_back(reason);
    }
}

} // namespace tallyvox::indexer::readers
