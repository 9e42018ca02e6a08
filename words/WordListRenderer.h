#pragma once

#include "prefs/PreferenceKeys.h"
#include "support/FileRef.h"
#include "words/WordContext.h"
#include "words/WordListOptions.h"
#include "words/WordTable.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace tallyvox {

class CountFormatter;
class WordOrder;

/// The whole word-list text of one file, in UTF-8: each word, its count framed as
/// separateBy says (while "IncludeFrequency" is on), then the lineStyle separator, which
/// also follows the last word. Nothing when the file has no words. Logs
/// "There are <n> words in "<name>"". The options (all off unless given) shape the words
/// and may choose another format; see renderWordTable.
std::optional<QByteArray> RenderWordList(const WordContext& context, const FileRef& file,
                                         LineStyle lineStyle, SeparateBy separateBy,
                                         bool alphabetical, const WordListOptions& options = {});

/// The list text of a table, the indexer's for one file or the sum of several: shaped by
/// the options (folding, stop words, minimum count), ordered, and written in the options'
/// format, the design's text (as RenderWordList describes it) or CSV or TSV, which
/// separateBy and lineStyle do not touch. Logs "There are <n> words in <subject>", n being
/// the total of the counts written (0 while "IncludeFrequency" is off), unless subject is
/// empty; the totals of a CSV list go to the log too. Nothing when no word is left.
std::optional<QByteArray> renderWordTable(const WordContext& context, WordTable table,
                                          const QString& subject, LineStyle lineStyle,
                                          SeparateBy separateBy, bool alphabetical,
                                          const WordListOptions& options);

/// Appends the count at index: " (n)", a tab and n, ",n", or nothing for another value.
void AppendFrequency(QByteArray& text, const WordOrder& counts, SeparateBy separateBy,
                     const CountFormatter& locale, qsizetype index);

/// Appends the separator: LF, CR, CR LF, a space, a comma, or nothing for another value.
void AppendLineSeparator(QByteArray& text, LineStyle lineStyle);

/// A count as the locale writes a plain integer, or nothing when it cannot be formatted.
std::optional<QString> FormatCount(qint32 value, const CountFormatter& locale);

} // namespace tallyvox
