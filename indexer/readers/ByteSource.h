#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace tallyvox::indexer::readers {

/// Fills buf with up to cap bytes and returns how many; 0 means the end (or an error).
using ByteSource = std::function<std::size_t(char* buf, std::size_t cap)>;

/// A source over bytes that outlive it.
ByteSource memorySource(std::string_view bytes);
/// A source reading a file; an unreadable file is an empty source.
ByteSource fileSource(const std::string& path);
/// Reads the whole source, at most limit bytes; sets truncated when more was left.
std::string readAll(const ByteSource& source, std::size_t limit, bool* truncated = nullptr);

} // namespace tallyvox::indexer::readers
