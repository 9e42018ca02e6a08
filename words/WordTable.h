#pragma once

#include <QHash>
#include <QString>

#include <limits>
#include <optional>

namespace tallyvox {

/// The distinct words of one file with their occurrence counts; exact, case-sensitive keys.
/// A count the result file held as something other than an integer is kept as
/// unreadableCount, so the word stays in the table but its count converts to nothing.
using WordTable = QHash<QString, qint64>;

inline constexpr qint64 unreadableCount = std::numeric_limits<qint64>::min();

/// A count as a 32-bit signed integer, or nothing when it does not fit or was unreadable.
inline std::optional<qint32> countToInt32(qint64 count)
{
    if (count < std::numeric_limits<qint32>::min() || count > std::numeric_limits<qint32>::max()) {
        return std::nullopt;
    }
    return static_cast<qint32>(count);
}

} // namespace tallyvox
