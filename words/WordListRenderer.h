#pragma once

#include "support/FileRef.h"
#include "words/WordContext.h"

#include <QList>
#include <QString>

#include <optional>

namespace tallyvox {

class CountFormatter;

/// The whole word-list text of one file: each word, its count framed as separateBy
/// says (while "IncludeFrequency" is on), then the lineStyle separator, which also
/// follows the last word. Nothing when the file has no words. Logs
/// "There are <n> words in "<name>"".
std::optional<QString> RenderWordList(const WordContext& context, const FileRef& file,
                                      qint32 lineStyle, qint32 separateBy, bool alphabetical);

/// Appends the count at index: 1 " (n)", 2 tab and n, 3 ",n", anything else nothing.
void AppendFrequency(QString& text, const QList<qint64>& counts, qint32 separateBy,
                     const CountFormatter& locale, qsizetype index);

/// Appends the separator: 1 LF, 2 CR, 3 CR LF, 4 a space, 5 a comma, anything else nothing.
void AppendLineSeparator(QString& text, qint32 lineStyle);

/// A count as the locale writes a plain integer, or nothing when it cannot be formatted.
std::optional<QString> FormatCount(qint32 value, const CountFormatter& locale);

} // namespace tallyvox
