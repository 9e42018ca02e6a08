#pragma once

#include "support/FileRef.h"
#include "support/Status.h"

#include <QString>

#include <optional>

namespace tallyvox {

/// Looks up name inside parent. False only when nothing of that name exists; any other
/// failure counts as found, with outRef left empty.
bool MakeChildRef(const FileRef& parent, const QString& name, std::optional<FileRef>& outRef);

/// The folder name inside parent: noErr without creating anything when MakeChildRef finds
/// it, else the status of creating it.
Status CreateChildFolder(const FileRef& parent, const QString& name,
                         std::optional<FileRef>& outRef);

/// Writes text as UTF-8 to TallyvoxData.txt in a new folder named by a UUID inside
/// "Tallyvox" in the per-user temporary folder. False when any step fails; the folders
/// are never removed.
bool WriteTextToTemporaryFile(const QString& text, std::optional<FileRef>& outRef);

} // namespace tallyvox
