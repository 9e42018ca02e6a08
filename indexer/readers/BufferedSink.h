#pragma once

#include "indexer/TextSink.h"

#include <cstddef>
#include <string>
#include <vector>

namespace tallyvox::indexer::readers {

/// Holds text and boundaries so that parts read in storage order can be delivered in
/// document order.
class BufferedSink : public TextSink {
public:
    void text(std::string_view utf8) override { m_text.append(utf8); }
    void boundary() override { m_breaks.push_back(m_text.size()); }

    bool empty() const { return m_text.empty(); }
    /// Bytes of text held.
    std::size_t size() const { return m_text.size(); }

    /// Delivers everything held, in the order it came.
    void replay(TextSink& sink) const
    {
        std::size_t from = 0;
        for (const std::size_t at : m_breaks) {
            if (at > from) {
                sink.text(std::string_view(m_text).substr(from, at - from));
            }
            sink.boundary();
            from = at;
        }
        if (from < m_text.size()) {
            sink.text(std::string_view(m_text).substr(from));
        }
    }

private:
    std::string m_text;
    std::vector<std::size_t> m_breaks;
};

} // namespace tallyvox::indexer::readers
