#pragma once

#include "support/FileRef.h"

#include <QString>

#include <optional>

namespace tallyvox {

/// The POSIX path of a file reference, or nothing for a null reference or a path of more
/// than 4097 bytes (the conversion buffer is 4098 bytes, two more than elsewhere).
std::optional<QString> stringWithFSRef(const FileRef* ref);

/// A reference to the item that path names, or nothing when there is no such item.
std::optional<FileRef> getFSRef(const QString& path);

} // namespace tallyvox
