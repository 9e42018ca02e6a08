// A lemma file: any bytes are parsed without a crash, and grouping a table of the file's own
// forms under their headwords keeps every occurrence, folded or not.
#include "words/LemmaList.h"
#include "words/WordTableShaping.h"

#include <cstdint>
#include <cstdlib>

using namespace tallyvox;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    for (const bool fold : {false, true}) {
        WordListOptions options;
        options.foldCase = fold;
        auto lemmas = std::make_shared<LemmaList>(parseLemmaList(bytes, fold));
        WordTable table;
        qint64 total = 0;
        for (auto it = lemmas->headwordOf.cbegin(); it != lemmas->headwordOf.cend(); ++it) {
            table.insert(it.key(), 2);
            table.insert(it.value() + QStringLiteral(" x"), 1); // as the start of a bigram
        }
        table.insert(QStringLiteral("un\nlisted"), 1); // no line of the file gives this key
        for (const qint64 count : table) {
            total += count;
        }
        options.lemmas = std::move(lemmas);
        LemmaForms forms;
        shapeWordTable(table, options, &forms);
        qint64 after = 0;
        for (const qint64 count : table) {
            after += count;
        }
        qint64 inForms = 0;
        for (const auto& list : forms) {
            for (const auto& form : list) {
                inForms += form.second;
            }
        }
        if (after != total || inForms > total || !table.contains(QStringLiteral("un\nlisted"))) {
            std::abort();
        }
    }
    return 0;
}
