#pragma once

#include "prefs/PreferenceKeys.h"
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
                                      LineStyle lineStyle, SeparateBy separateBy,
                                      bool alphabetical);

/// Appends the count at index: " (n)", a tab and n, ",n", or nothing for another value.
void AppendFrequency(QString& text, const QList<qint64>& counts, SeparateBy separateBy,
                     const CountFormatter& locale, qsizetype index);

/// Appends the separator: LF, CR, CR LF, a space, a comma, or nothing for another value.
void AppendLineSeparator(QString& text, LineStyle lineStyle);

/// A count as the locale writes a plain integer, or nothing when it cannot be formatted.
std::optional<QString> FormatCount(qint32 value, const CountFormatter& locale);

} // namespace tallyvox
