#include "indexer/readers/ByteSource.h"

#include "indexer/Progress.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <memory>

namespace tallyvox::indexer::readers {

ByteSource memorySource(std::string_view bytes)
{
    return [bytes](char* buf, std::size_t cap) mutable {
        const std::size_t n = std::min(cap, bytes.size());
        std::memcpy(buf, bytes.data(), n);
        bytes.remove_prefix(n);
        return n;
    };
}

ByteSource fileSource(const std::string& path)
{
    std::shared_ptr<std::FILE> file(std::fopen(path.c_str(), "rb"), [](std::FILE* f) {
        if (f != nullptr) {
            std::fclose(f);
        }
    });
    // The file is read once from its start, so the bytes handed out are its position; asking
    // the stream (ftello) would cost a system call per read.
    return [file, position = std::uint64_t{0}](char* buf, std::size_t cap) mutable -> std::size_t {
        if (!file) {
            return 0;
        }
        const std::size_t n = std::fread(buf, 1, cap, file.get());
        position += n;
        progress::setRead(position);
        return n;
    };
}

std::string readAll(const ByteSource& source, std::size_t limit, bool* truncated)
{
    std::string out;
    char buf[65536];
    for (;;) {
        const std::size_t n = source(buf, sizeof buf);
        if (n == 0) {
            break;
        }
        if (out.size() + n > limit) {
            out.append(buf, limit - out.size());
            if (truncated != nullptr) {
                *truncated = true;
            }
            return out;
        }
        out.append(buf, n);
    }
    if (truncated != nullptr) {
        *truncated = false;
    }
    return out;
}

} // namespace tallyvox::indexer::readers
