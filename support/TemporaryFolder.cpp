#include "support/TemporaryFolder.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace tallyvox {

namespace {

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

// The per-user place when $TMPDIR is not set.
std::string usualFolder()
{
    if (const std::string runtime = environment("XDG_RUNTIME_DIR"); !runtime.empty()) {
        return runtime + "/tallyvox";
    }
    return "/tmp/tallyvox-" + std::to_string(::getuid());
}

std::string parentOf(const std::string& path)
{
    const std::string::size_type slash = path.find_last_of('/');
    return slash == 0 || slash == std::string::npos ? "/" : path.substr(0, slash);
}

// Makes the usual folder when missing. One we own but left open is closed again; one that
// is a link or belongs to someone else is never touched.
bool ensureUsualFolder(const std::string& path)
{
    if (::mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) {
        return false;
    }
    struct stat info {};
    if (::lstat(path.c_str(), &info) != 0 || !S_ISDIR(info.st_mode) || info.st_uid != ::getuid()) {
        return false;
    }
    if ((info.st_mode & 0077) != 0 && ::chmod(path.c_str(), 0700) != 0) {
        return false;
    }
    return isPrivateFolder(path);
}

// A fresh folder nobody can have prepared: mkdtemp makes it 0700 under a random name.
TemporaryFolderChoice privateFolderBeneath(const std::string& parent, std::string problem)
{
    std::string pattern = parent + "/tallyvox-" + std::to_string(::getuid()) + "-XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr || !isPrivateFolder(pattern)) {
        return {{},
                false,
                "Tallyvox has no private temporary folder (" + parent + ": " +
                    std::strerror(errno) + "), so it can extract no words"};
    }
    return {pattern, true, std::move(problem)};
}

} // namespace

bool isPrivateFolder(const std::string& path)
{
    struct stat info {};
    return !path.empty() && ::lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::getuid() && (info.st_mode & 0077) == 0;
}

TemporaryFolderChoice chooseTemporaryFolder()
{
    if (const std::string tmp = environment("TMPDIR"); !tmp.empty()) {
        // A shared TMPDIR (such as /tmp) is normal: no problem to report.
        return isPrivateFolder(tmp) ? TemporaryFolderChoice{tmp, false, {}}
                                    : privateFolderBeneath(tmp, {});
    }
    const std::string usual = usualFolder();
    if (ensureUsualFolder(usual)) {
        return {usual, false, {}};
    }
    return privateFolderBeneath(parentOf(usual),
                                "The temporary folder " + usual +
                                    " belongs to another user or is no private folder; Tallyvox "
                                    "uses a new one of its own for this run");
}

std::string temporaryFolderCandidate()
{
    const std::string tmp = environment("TMPDIR");
    return tmp.empty() ? usualFolder() : tmp;
}

std::string temporaryFolder()
{
    if (const std::string tmp = environment("TMPDIR"); !tmp.empty()) {
        return isPrivateFolder(tmp) ? tmp : std::string();
    }
    const std::string usual = usualFolder();
    return ensureUsualFolder(usual) ? usual : std::string();
}

} // namespace tallyvox
