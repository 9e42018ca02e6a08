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

/// "ListFormat": the word list as plain text or as a table for spreadsheets. Unlike
/// the pop-ups above it counts from 0; a value that names no format means the text.
enum class ListFormat : qint32 { Text = 0, Csv = 1, Tsv = 2 };

/// The format a stored "ListFormat" number names.
constexpr ListFormat listFormatOf(qint32 stored)
{
    return stored == static_cast<qint32>(ListFormat::Csv)   ? ListFormat::Csv
           : stored == static_cast<qint32>(ListFormat::Tsv) ? ListFormat::Tsv
                                                            : ListFormat::Text;
}

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

/// A stored 32-bit integer: its key and the value used when it is missing, not a whole
/// number, or beyond 32 bits.
struct IntegerKey {
    const char* name;
    qint32 fallback;
};

/// A stored string: its key and the value used when it is missing or not a string.
struct StringKey {
    const char* name;
    const char* fallback;
};

/// A stored real number: its key and the value used when it is missing, not a number, or
/// not finite. A stored integer reads as the same real number.
struct RealKey {
    const char* name;
    double fallback;
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

// The word-list options, beyond the five settings above. Each default leaves the list
// exactly as the settings above make it (docs/word-list-options.md).
inline constexpr BoolKey FoldCase{"FoldCase", false};
inline constexpr BoolKey DictionaryOrder{"DictionaryOrder", false};
inline constexpr IntegerKey MinimumCount{"MinimumCount", 1};
inline constexpr StringKey StopListPath{"StopListPath", ""};
inline constexpr BoolKey CombineFiles{"CombineFiles", false};
inline constexpr IntegerKey ListFormat{"ListFormat",
                                       static_cast<qint32>(tallyvox::ListFormat::Text)};
inline constexpr BoolKey IncludeTotals{"IncludeTotals", false};

// Corpus figures: how a word spreads over a run's files, its rate, and keywords against a
// reference (docs/word-list-options.md). Off by default, as above.
inline constexpr BoolKey IncludeRange{"IncludeRange", false};
inline constexpr BoolKey IncludePerMillion{"IncludePerMillion", false};
inline constexpr StringKey ReferencePath{"ReferencePath", ""};
/// G2 of 6.63 is p < 0.01 with one degree of freedom.
inline constexpr RealKey KeynessThreshold{"KeynessThreshold", 6.63};

// Entries beyond single word forms: sequences of words, and forms grouped under their
// headword by a lemma file (docs/word-list-options.md). Off by default, as above.
/// 1 to 5 words an entry; any other value counts single words.
inline constexpr IntegerKey NGramLength{"NGramLength", 1};
inline constexpr StringKey LemmaListPath{"LemmaListPath", ""};
/// Without a lemma file, forms are grouped by a Hunspell dictionary of this language.
inline constexpr BoolKey Lemmatize{"Lemmatize", false};
/// A dictionary's name ("en_US"); empty: the locale's.
inline constexpr StringKey LemmaLanguage{"LemmaLanguage", ""};

} // namespace prefs
} // namespace tallyvox
