#pragma once

#include "support/FileRef.h"

#include <QString>

namespace tallyvox {

/// True when a directory name ends in one of the bundle extensions that make a
/// directory a package (.rtfd, .app, ...), compared without regard to case.
bool hasPackageExtension(const QString& name);

/// A container that is not a package: the batch run refuses it as "not a file".
bool IsPlainFolder(const FileRef& file);

} // namespace tallyvox
