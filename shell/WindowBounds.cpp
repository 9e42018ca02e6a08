#include "shell/WindowBounds.h"

#include <algorithm>

namespace tallyvox {

std::optional<QRect> boundsToRestore(const std::optional<QRect>& stored, const QRect& screen)
{
    if (!stored) {
        return std::nullopt;
    }
    // Edges as stored: right = left + width, bottom = top + height. A stored rectangle
    // may be inverted; then it meets nothing.
    const QRect& r = *stored;
    const int left = std::max(r.x(), screen.x());
    const int right = std::min(r.x() + r.width(), screen.x() + screen.width());
    const int top = std::max(r.y(), screen.y());
    const int bottom = std::min(r.y() + r.height(), screen.y() + screen.height());
    if (left < right && top < bottom) {
        return stored;
    }
    return std::nullopt;
}

} // namespace tallyvox
