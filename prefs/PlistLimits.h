#pragma once

#include <QByteArray>

namespace tallyvox {

/// What a settings file may be before libplist is given it: libplist recurses once per
/// level when it frees or writes a tree, and copies an object once per reference to it,
/// so a deep or cleverly shared file could crash the application or fill its memory.
struct PlistLimits {
    /// The store writes six keys one level deep; a real file is a few hundred bytes.
    qsizetype largestFile = qsizetype{1024} * 1024;
    int deepestNesting = 64;
    /// Objects after every shared reference is counted as the copy libplist makes.
    qint64 mostObjects = 100'000;
};

/// True when bytes (a binary "bplist00" or an XML property list) stay within limits and,
/// for a binary one, every offset and reference lies inside it and no object contains
/// itself. Reads the structure only; whether it parses is libplist's to say.
bool withinPlistLimits(const QByteArray& bytes, const PlistLimits& limits = {});

} // namespace tallyvox
