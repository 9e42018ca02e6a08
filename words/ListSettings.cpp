#include "words/ListSettings.h"

#include "prefs/PreferenceStore.h"

namespace tallyvox {

ListSettings ListSettings::read(const PreferenceStore& stored)
{
    // One read of the file for every setting.
    const PreferenceStore store = stored.snapshot();
    ListSettings settings;
    settings.lineStyle = store.GetLineStyle();
    settings.separateBy = store.GetSeparateBy();
    settings.alphabetical = store.GetSortBy() == SortBy::Alphabetical;
    settings.includeFrequency = store.GetIncludeFrequency();
    settings.options = WordListOptions::read(store);
    return settings;
}

} // namespace tallyvox
