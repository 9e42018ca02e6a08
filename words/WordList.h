#pragma once

#include "support/FileRef.h"
#include "words/WordContext.h"

#include <QString>

namespace tallyvox {

/// The word list of one file, start to end: a fresh, empty "<name>.txt" in the output
/// folder, the words indexed, ordered and rendered with the settings of this moment,
/// written as UTF-8, handed to the text editor, and the application raised again. A file
/// without words leaves the empty list and opens nothing (noErr). A list that could not be
/// placed or written opens nothing either: its status is returned and one line logged.
Status writeWordList(const WordContext& context, const FileRef& file, const QString& name);

} // namespace tallyvox
