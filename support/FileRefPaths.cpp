#include "support/FileRefPaths.h"
#include "support/FilePath.h"

#include <QFile>

namespace tallyvox {

namespace {
constexpr int pathBufferSize = 4098;
}

std::optional<QString> stringWithFSRef(const FileRef* ref)
{
    if (ref == nullptr) {
        return std::nullopt;
    }
    QByteArray bytes;
    if (ref->makePath(bytes, pathBufferSize) != noErr) {
        return std::nullopt;
    }
    return decodePath(bytes);
}

std::optional<FileRef> getFSRef(const QString& path)
{
    return FileRef::fromPath(path);
}

} // namespace tallyvox
