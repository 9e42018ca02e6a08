#pragma once

#include "indexer/TextSink.h"

#include <cstddef>

// Touches every byte delivered, so that a dangling view shows up under AddressSanitizer.
class FuzzSink : public tallyvox::indexer::TextSink {
public:
    void text(std::string_view utf8) override
    {
        for (const char c : utf8) {
            m_sum += static_cast<unsigned char>(c);
        }
    }
    void boundary() override { ++m_sum; }

private:
    std::size_t m_sum = 0;
};
