#pragma once

#include <cstdint>
#include <string_view>

namespace tallyvox::indexer {

/// Where a document reader delivers the text it finds.
class TextSink {
public:
    TextSink() = default;
    virtual ~TextSink() = default;
    TextSink(const TextSink&) = delete;
    TextSink& operator=(const TextSink&) = delete;

    /// More text in UTF-8 (invalid sequences allowed); a word may continue across calls.
    virtual void text(std::string_view utf8) = 0;
    /// A hard break: text delivered after it never joins the text before into one word.
    virtual void boundary() = 0;
    /// About how many bytes of text are to come, when the reader knows (a file's size, say),
    /// so that the sink can size its tables once instead of growing them. Optional.
    virtual void expectText(std::uint64_t bytes) { static_cast<void>(bytes); }
};

} // namespace tallyvox::indexer
