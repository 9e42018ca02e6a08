#include "words/WordListOptions.h"

#include "prefs/PreferenceStore.h"

namespace tallyvox {

WordListOptions WordListOptions::read(const PreferenceStore& store)
{
    WordListOptions options;
    options.foldCase = store.readBool(prefs::FoldCase);
    options.dictionaryOrder = store.readBool(prefs::DictionaryOrder);
    options.minimumCount = store.readInteger(prefs::MinimumCount);
    options.stopListPath = store.readString(prefs::StopListPath);
    options.listFormat = listFormatOf(store.readInteger(prefs::ListFormat));
    options.includeTotals = store.readBool(prefs::IncludeTotals);
    options.includeRange = store.readBool(prefs::IncludeRange);
    options.includePerMillion = store.readBool(prefs::IncludePerMillion);
    options.referencePath = store.readString(prefs::ReferencePath);
    options.keynessThreshold = store.readReal(prefs::KeynessThreshold);
    options.ngramLength = ngramLengthOf(store.readInteger(prefs::NGramLength));
    options.lemmaListPath = store.readString(prefs::LemmaListPath);
    options.lemmatize = store.readBool(prefs::Lemmatize);
    options.lemmaLanguage = store.readString(prefs::LemmaLanguage);
    return options;
}

QString listExtension(ListFormat format)
{
    switch (format) {
    case ListFormat::Csv:
        return QStringLiteral(".csv");
    case ListFormat::Tsv:
        return QStringLiteral(".tsv");
    case ListFormat::Text:
        break;
    }
    return QStringLiteral(".txt");
}

} // namespace tallyvox
