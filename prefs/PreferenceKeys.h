#pragma once

#include <QtGlobal>

namespace tallyvox::prefs {

/// A stored switch: its key and the value used when it is missing or not a boolean.
struct BoolKey {
    const char* name;
    bool fallback;
};

/// A stored 16-bit number: its key and the value used when it is missing, not a
/// number, or does not fit 16 bits.
struct NumberKey {
    const char* name;
    qint32 fallback;
};

inline constexpr BoolKey QuitWhenDone{"QuitWhenDone", false};
inline constexpr BoolKey IncludeFrequency{"IncludeFrequency", true};
inline constexpr NumberKey SortBy{"SortBy", 1};
inline constexpr NumberKey SeparateBy{"SeparateBy", 1};
inline constexpr NumberKey LineStyle{"LineStyle", 1};
inline constexpr const char* WindowBounds = "WindowBounds";

} // namespace tallyvox::prefs
