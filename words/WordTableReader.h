#pragma once

#include "words/WordTable.h"

#include <QByteArrayView>
#include <QString>

#include <optional>

namespace tallyvox {

/// Reads the indexer's result file: a property list, binary ("bplist00") or XML, whose root
/// is a dictionary from word to count. Nothing when the file is absent, is a directory,
/// cannot be read, or does not hold a property-list dictionary. A value that is not an
/// integer keeps its word, with unreadableCount; an entry whose key is not a string is left out.
std::optional<WordTable> ReadWordTableFile(const QString& path);

/// The same for the file open as descriptor (read from its start; the caller keeps it).
/// Nothing when it is empty.
std::optional<WordTable> ReadWordTableDescriptor(int descriptor);

/// The same for the bytes of such a file. Safe on hostile input: every read is bounds-checked
/// and the work stays linear in the input's size.
std::optional<WordTable> ParseWordTable(QByteArrayView data);

} // namespace tallyvox
