#include "indexer/ResultFile.h"

#include "indexer/BinaryPlistWriter.h"

#include <cstdio>
#include <cstdlib>
#include <vector>

#include <sys/stat.h>
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

bool writeResultDescriptor(int descriptor, const WordMap& words)
{
    struct stat info {};
    if (::fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode) ||
        ::ftruncate(descriptor, 0) != 0 || ::lseek(descriptor, 0, SEEK_SET) != 0) {
        return false;
    }
    // The stream owns a copy of the descriptor, which the server and the application share.
    const int copy = ::dup(descriptor);
    std::FILE* file = copy < 0 ? nullptr : ::fdopen(copy, "wb");
    if (!file) {
        if (copy >= 0) {
            ::close(copy);
        }
        return false;
    }
    const bool written = writeBinaryPlist(file, words);
    const bool closed = std::fclose(file) == 0;
    if (!written || !closed) {
        [[maybe_unused]] const int cut = ::ftruncate(descriptor, 0);
        return false;
    }
    return true;
}

} // namespace tallyvox::indexer
