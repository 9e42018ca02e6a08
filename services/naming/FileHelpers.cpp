#include "services/naming/FileHelpers.h"
#include "support/FilePath.h"

#include "support/Desktop.h"

#include <QFile>

#include <cerrno>
#include <sys/stat.h>

namespace tallyvox {

namespace {

Status statItem(const FileRef& ref, struct stat& info)
{
    if (::stat(encodePath(ref.path()).constData(), &info) != 0) {
        return statusFromErrno(errno);
    }
    return noErr;
}

} // namespace

Status GetItemName(const FileRef& ref, QString* out)
{
    if (out == nullptr) {
        return paramErr;
    }
    struct stat info = {};
    if (const Status status = statItem(ref, info); status != noErr) {
        return status;
    }
    *out = ref.name();
    return noErr;
}

Status GetNodeIDAndIsDirectory(const FileRef& ref, quint32* nodeID, bool* isDirectory)
{
    struct stat info = {};
    if (const Status status = statItem(ref, info); status != noErr) {
        return status;
    }
    if (nodeID != nullptr) {
        *nodeID = static_cast<quint32>(info.st_ino);
    }
    if (isDirectory != nullptr) {
        *isDirectory = S_ISDIR(info.st_mode);
    }
    return noErr;
}

Status FinderUpdateItem(Desktop& desktop, const FileRef& ref)
{
    desktop.filesChanged({ref.path()});
    return noErr;
}

} // namespace tallyvox
