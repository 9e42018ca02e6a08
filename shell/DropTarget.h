#pragma once

#include <QStringList>

class QMimeData;

namespace tallyvox {

/// True when at least one dragged item is a local file or folder that exists.
/// Text alone never is.
bool DragHasFiles(const QMimeData& data);

/// One entry per dragged item: its path, or an empty entry for an item that names no
/// existing local file (it fails as a file reference when the run reads it).
QStringList droppedEntries(const QMimeData& data);

/// Whether a drop is delivered: as when an alias is made of each item, only the
/// last item decides.
bool lastEntryUsable(const QStringList& entries);

} // namespace tallyvox
