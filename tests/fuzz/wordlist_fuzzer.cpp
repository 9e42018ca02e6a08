// A keyword list's reference given as a word list: any bytes are parsed without a crash, and
// a list Tallyvox writes of what was read, in CSV and in TSV, reads back as the same table.
#include "words/ListSettings.h"
#include "words/ReferenceCorpus.h"
#include "words/WordListRenderer.h"

#include <cstdint>
#include <cstdlib>

using namespace tallyvox;

namespace {

// Words that a written list cannot give back as they are: a totals row's "#", a formula
// guard's quote, and counts the lists leave empty.
bool writesBack(const WordTable& table)
{
    for (qsizetype i = 0; i < table.size(); ++i) {
        const QStringView word = table.word(i);
        if (word.startsWith(u'#') || word.startsWith(u'\'') || !countToInt32(table.count(i))) {
            return false;
        }
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const std::optional<WordTable> table = parseWordList(bytes);
    if (!table || table->isEmpty() || !writesBack(*table)) {
        return 0;
    }
    for (const ListFormat format : {ListFormat::Csv, ListFormat::Tsv}) {
        ListSettings settings;
        settings.options.listFormat = format;
        const RenderedList list = renderWordTable(*table, settings, QString());
        if (!list.text || parseWordList(*list.text) != *table) {
            std::abort();
        }
    }
    return 0;
}
