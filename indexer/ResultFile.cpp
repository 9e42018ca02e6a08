#include "indexer/ResultFile.h"

#include "indexer/BinaryPlistWriter.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <unistd.h>

namespace tallyvox::indexer {

bool writeResultFile(const std::string& folder, const WordMap& words)
{
    const std::string target = folder + '/' + tallyvox::resultFileName;
    std::string pattern = target + ".XXXXXX";
    const int fd = ::mkstemp(pattern.data());
    if (fd < 0) {
        return false;
    }
    std::FILE* file = ::fdopen(fd, "wb");
    if (!file) {
        ::close(fd);
        ::unlink(pattern.c_str());
        return false;
    }
    const bool written = writeBinaryPlist(file, words);
    const bool closed = std::fclose(file) == 0;
    if (!written || !closed || std::rename(pattern.c_str(), target.c_str()) != 0) {
        ::unlink(pattern.c_str());
        return false;
    }
    return true;
}

} // namespace tallyvox::indexer
