#pragma once

#include <QRect>

#include <optional>

namespace tallyvox {

/// The stored window bounds to restore: only when they share at least one pixel with
/// the screen rectangle (strict comparisons on the edges). They are never clipped or
/// moved, so a window that overlaps by one pixel comes back where it was.
std::optional<QRect> boundsToRestore(const std::optional<QRect>& stored, const QRect& screen);

} // namespace tallyvox
