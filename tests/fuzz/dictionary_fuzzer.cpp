// A Hunspell dictionary: the .aff and the .dic (the input split at its first NUL byte) are
// read by Hunspell and by the suffix rules and roots that pick the words Hunspell is asked
// about; the words of the .dic and their suffixed forms, folded and not, get headwords
// only among the table's own words' keys.
#include "words/Lemmatizer.h"
#include "words/WordTable.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdint>
#include <cstdlib>

using namespace tallyvox;

namespace {

bool write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    const qsizetype split = bytes.indexOf('\0');
    const QByteArray affix = split < 0 ? bytes : bytes.left(split);
    const QByteArray words = split < 0 ? QByteArray("1\nword\n") : bytes.mid(split + 1);
    const QTemporaryDir dir;
    const QString affixPath = dir.filePath(QStringLiteral("xx.aff"));
    const QString wordsPath = dir.filePath(QStringLiteral("xx.dic"));
    if (!dir.isValid() || !write(affixPath, affix) || !write(wordsPath, words)) {
        return 0;
    }
    WordTable table;
    for (const QByteArray& line : words.split('\n')) {
        const QString word = QString::fromUtf8(line.left(line.indexOf('/'))).trimmed();
        if (!word.isEmpty() && !word.contains(QLatin1Char(' '))) {
            for (const char* ending : {"", "s", "es", "ed", "ing", "ies"}) {
                table.insert(word + QLatin1String(ending), 1);
            }
        }
    }
    Lemmatizer lemmatizer(affixPath, wordsPath);
    for (const bool fold : {false, true}) {
        const LemmaList lemmas = lemmatizer.lemmasOf({&table}, fold);
        for (auto it = lemmas.headwordOf.cbegin(); it != lemmas.headwordOf.cend(); ++it) {
            if (it.value().isEmpty() || (!fold && !table.contains(it.key()))) {
                std::abort();
            }
        }
    }
    return 0;
}
