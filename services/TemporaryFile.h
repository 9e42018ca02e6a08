#pragma once

#include "support/FileRef.h"
#include "support/Status.h"

#include <QByteArrayView>
#include <QString>

class QIODevice;

#include <chrono>
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
/// "Tallyvox" in the private temporary folder. False when any step fails. The copies stay
/// until removeOldTemporaryFiles finds them old enough.
bool WriteTextToTemporaryFile(const QString& temporaryFolder, const QString& text,
                              std::optional<FileRef>& outRef);

/// The same for bytes as they come, unchanged: head, then everything input still holds,
/// copied a block at a time so that a large input is never held whole.
bool writeStreamToTemporaryFile(const QString& temporaryFolder, QByteArrayView head,
                                QIODevice& input, std::optional<FileRef>& outRef);

/// How long a copy of selected text is kept: long enough to look at it again.
inline constexpr std::chrono::hours temporaryFileLifetime{24};

/// Removes the UUID folders of WriteTextToTemporaryFile whose content is older than
/// maxAge, with the copy in each; anything else in "Tallyvox" is left alone. Returns how
/// many it removed.
int removeOldTemporaryFiles(const QString& temporaryFolder, std::chrono::seconds maxAge);

} // namespace tallyvox
