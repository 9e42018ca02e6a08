#pragma once

#include <QtGlobal>

namespace tallyvox {

// The stored choices, with the values their pop-up menus store (first item 1). A stored
// number outside these is read back as it is and means what the comment says.

/// "SortBy": any value but Alphabetical orders by falling frequency.
enum class SortBy : qint32 { Alphabetical = 1, ByFrequency = 2 };

/// "SeparateBy": how a count follows its word; any other value leaves the count out.
enum class SeparateBy : qint32 { Parentheses = 1, Tab = 2, Comma = 3 };

/// "LineStyle": what follows every word, the last included; any other value, nothing.
enum class LineStyle : qint32 {
    LineFeed = 1,
    CarriageReturn = 2,
    CarriageReturnLineFeed = 3,
    Space = 4,
    Comma = 5,
};

namespace prefs {

/// A stored switch: its key and the value used when it is missing or not a boolean.
struct BoolKey {
    const char* name;
    bool fallback;
};

/// A stored 16-bit number: its key and the value used when it is missing or not a
/// number. A number that does not fit 16 bits reads as 1, whatever the fallback.
struct NumberKey {
    const char* name;
    qint32 fallback;
};

/// A stored 16-bit number that names one of Choice's values.
template <typename Choice>
struct ChoiceKey {
    const char* name;
    Choice fallback;

    constexpr NumberKey number() const { return {name, static_cast<qint32>(fallback)}; }
};

inline constexpr BoolKey QuitWhenDone{"QuitWhenDone", false};
inline constexpr BoolKey IncludeFrequency{"IncludeFrequency", true};
inline constexpr ChoiceKey<tallyvox::SortBy> SortBy{"SortBy", tallyvox::SortBy::Alphabetical};
inline constexpr ChoiceKey<tallyvox::SeparateBy> SeparateBy{"SeparateBy",
                                                            tallyvox::SeparateBy::Parentheses};
inline constexpr ChoiceKey<tallyvox::LineStyle> LineStyle{"LineStyle",
                                                          tallyvox::LineStyle::LineFeed};
inline constexpr const char* WindowBounds = "WindowBounds";

} // namespace prefs
} // namespace tallyvox
