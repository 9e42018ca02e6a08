#include "support/TemporaryFolder.h"

#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

namespace {

// A private folder must be ours and closed to others; make it when missing.
bool ensurePrivateFolder(const std::string& path)
{
    if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) {
        return false;
    }
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode)) {
        return false;
    }
    if (info.st_uid != ::getuid()) {
        return false;
    }
    if ((info.st_mode & 0077) != 0 && ::chmod(path.c_str(), 0700) != 0) {
        return false;
    }
    return true;
}

} // namespace

std::string temporaryFolder()
{
    if (const char* tmp = std::getenv("TMPDIR"); tmp && *tmp) {
        return tmp;
    }
    if (const char* runtime = std::getenv("XDG_RUNTIME_DIR"); runtime && *runtime) {
        std::string path = std::string(runtime) + "/tallyvox";
        if (ensurePrivateFolder(path)) {
            return path;
        }
    }
    std::string path = "/tmp/tallyvox-" + std::to_string(::getuid());
    if (ensurePrivateFolder(path)) {
        return path;
    }
    return {};
}

} // namespace tallyvox
