#pragma once

#include "support/FileRef.h"
#include "support/Status.h"

#include <QString>
#include <QtGlobal>

namespace tallyvox {

class Desktop;

/// The item's name as the file system stores it; paramErr when out is null.
Status GetItemName(const FileRef& ref, QString* out);

/// The item's inode number (cut to 32 bits) and whether it is a directory, each only
/// when asked for; with neither asked, still checks that the item can be reached.
Status GetNodeIDAndIsDirectory(const FileRef& ref, quint32* nodeID, bool* isDirectory);

/// Tells file managers that the item changed (after a rename, so open windows show the
/// new name). Best effort: always noErr.
Status FinderUpdateItem(Desktop& desktop, const FileRef& ref);

} // namespace tallyvox
