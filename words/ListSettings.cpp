#include "words/ListSettings.h"

#include "prefs/PreferenceStore.h"

namespace tallyvox {

ListSettings ListSettings::read(const PreferenceStore& store)
{
    ListSettings settings;
    settings.lineStyle = store.GetLineStyle();
    settings.separateBy = store.GetSeparateBy();
    settings.alphabetical = store.GetSortBy() == SortBy::Alphabetical;
    settings.includeFrequency = store.GetIncludeFrequency();
    settings.options = WordListOptions::read(store);
    return settings;
}

} // namespace tallyvox
