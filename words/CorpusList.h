#pragma once

#include "prefs/PreferenceKeys.h"
#include "words/ListSettings.h"
#include "words/WordTable.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <optional>

namespace tallyvox {

class WordSpread;
struct RenderedList;

/// What a list is made from besides its own table.
struct ListSources {
    /// The run's files word by word, for a combined list; none for one file's list.
    const WordSpread* spread = nullptr;
    /// The reference's words as read (neither folded nor stopped), for a keyword list.
    std::shared_ptr<const WordTable> reference;
    /// The files of a combined list, for its totals; 0 for one file's list.
    qint64 files = 0;
    /// The text's type/token runs, when the indexer counted them, for the totals.
    std::optional<TypeRuns> typeRuns;
};

/// The totals of a list, said so that nobody takes the list for the whole text.
struct HonestTotals {
    /// The words the indexer counted, before the stop list and the minimum.
    qint64 textWords = 0;
    /// The distinct words of the text, after folding when the list folds.
    qint64 textDistinct = 0;
    /// The counts the list writes, added up, and its entries.
    qint64 listedWords = 0;
    qint64 listedDistinct = 0;
    /// The files of a combined list; 0 or 1 says nothing.
    qint64 files = 0;
    /// The words of a keyword list's reference.
    std::optional<qint64> referenceWords;
    /// A list of single words: the text's type/token runs as counted (none when they were
    /// not), and its words' mean length in Unicode code points, before any filter.
    std::optional<TypeRuns> typeRuns;
    std::optional<double> meanWordLength;
};

/// The text's side of the totals of an unshaped table, as options would shape it, with the
/// files and type/token runs of sources.
HonestTotals textTotalsOf(const WordTable& table, const WordListOptions& options,
                          const ListSources& sources);

/// "28 words in the text, 10 listed; 17 distinct words, 4 listed; type/token ratio 0.6071",
/// then for a list of single words "; standardised type/token ratio 0.5120 (runs of 1000
/// words)" (or "; no standardised type/token ratio (fewer than 1000 words)", "(no file has
/// 1000 words)" for several files) and "; mean word length 4.2500 characters", then
/// "; 3 files" and "; 5000 words in the reference" when they apply. The ratios are those
/// of the text, figures four decimals with a point.
QString describeHonestTotals(const HonestTotals& totals);

/// The totals of a CSV or TSV list: an empty row, then one row for each figure, whose
/// first field begins with "#" ("# words in the text,28").
QByteArray totalsRows(const HonestTotals& totals, ListFormat format);

/// Appends the totals line, "# " and the description, ended as the list's lines are; a
/// list whose words are not on lines gets a line feed before and after it.
void appendTotals(QByteArray& text, const HonestTotals& totals, LineStyle lineStyle);

/// A list with the corpus figures (range and dispersion, rate per million) or a keyword
/// list against sources.reference, from a table as the indexer or the run's sum left it.
/// subject names the list in the log, as renderWordTable's does.
RenderedList renderCorpusList(WordTable table, const ListSettings& settings, const QString& subject,
                              const ListSources& sources);

} // namespace tallyvox
