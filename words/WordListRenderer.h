#pragma once

#include "prefs/PreferenceKeys.h"
#include "words/CorpusList.h"
#include "words/ListSettings.h"
#include "words/WordTable.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

namespace tallyvox {

class CountFormatter;
class WordOrder;

/// A list as made, before it is written: its text, and the lines it leaves for the log.
struct RenderedList {
    /// The file's contents; nothing when no word is left.
    std::optional<QByteArray> text;
    /// "There are <n> words in <subject>", and the totals of a CSV list.
    QStringList logLines;
};

/// The list text of a table, the indexer's for one file or the sum of several, made from
/// the table and the settings alone (so it may run on any thread): shaped by the options
/// (folding, stop words, minimum count), ordered, and written in the options' format. The
/// plain text list is each word, its count framed as separateBy says (while
/// includeFrequency is on), then the lineStyle separator, which also follows the last
/// word; CSV and TSV are not touched by separateBy and lineStyle. The log line's n is the
/// total of the counts written (0 while includeFrequency is off); there is none when
/// subject is empty. The totals of a CSV list go to the log too. With the corpus figures
/// or a reference in sources, renderCorpusList makes the list instead.
RenderedList renderWordTable(WordTable table, const ListSettings& settings, const QString& subject,
                             const ListSources& sources = {});

/// Appends the count at index: " (n)", a tab and n, ",n", or nothing for another value.
void AppendFrequency(QByteArray& text, const WordOrder& counts, SeparateBy separateBy,
                     const CountFormatter& locale, qsizetype index);

/// Appends the separator: LF, CR, CR LF, a space, a comma, or nothing for another value.
void AppendLineSeparator(QByteArray& text, LineStyle lineStyle);

/// A count as the locale writes a plain integer, or nothing when it cannot be formatted.
std::optional<QString> FormatCount(qint32 value, const CountFormatter& locale);

} // namespace tallyvox
