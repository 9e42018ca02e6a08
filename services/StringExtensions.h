#pragma once

#include "support/FileRefPaths.h"

#include <QString>

#include <optional>

namespace tallyvox {

// stringWithFSRef and getFSRef live in support/FileRefPaths.h, where word extraction
// reaches them too.

/// The text between the first start marker and the first end marker found from the start
/// marker's own position, both matched without regard to case; nothing when either is
/// missing. An end marker found inside the start marker (equal markers, for one) makes a
/// negative range: std::out_of_range is thrown.
std::optional<QString> extractBetweenPattern(const QString& text, const QString& start,
                                             const QString& end);

/// The text between the first end marker and the start marker nearest before it, both
/// matched without regard to case; nothing when either is missing.
std::optional<QString> reverseExtractBetweenPattern(const QString& text, const QString& start,
                                                    const QString& end);

/// Runs script with /bin/sh and returns its standard output without trailing line breaks.
/// Nothing when the shell cannot start, nothing is printed, the output is not UTF-8, or
/// the output is a list (items separated by NUL bytes). The exit status is not looked at.
std::optional<QString> runScript(const QString& script);

/// A copy with every "/" and ":" replaced by "-".
QString cleanForFilename(const QString& text);

} // namespace tallyvox
