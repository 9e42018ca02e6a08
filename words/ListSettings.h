#pragma once

#include "prefs/PreferenceKeys.h"
#include "words/WordListOptions.h"

namespace tallyvox {

class PreferenceStore;

/// Everything that shapes one word list, read from the store once, when the list is begun,
/// so that a list is made with one set of settings from start to end however the store
/// changes meanwhile. Default-constructed, it holds the stored defaults.
struct ListSettings {
    LineStyle lineStyle = LineStyle::LineFeed;
    SeparateBy separateBy = SeparateBy::Parentheses;
    /// "SortBy" is Alphabetical; any other value orders by falling frequency.
    bool alphabetical = true;
    bool includeFrequency = true;
    WordListOptions options;

    /// The settings as stored now; the stop list's words are not read here.
    static ListSettings read(const PreferenceStore& store);
};

} // namespace tallyvox
