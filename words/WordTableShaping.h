#pragma once

#include "words/LemmaList.h"
#include "words/WordListOptions.h"
#include "words/WordTable.h"

#include <QSet>
#include <QString>

namespace tallyvox {

// What the word-list options do to a table before it is ordered. Everything here runs once
// per distinct word of the table (or of the stop list), never once per occurrence.

/// The word under Unicode full case folding (ICU's default, the same in every locale):
/// "THE" and "The" give "the", "ß" and "SS" give "ss", "ς" and "Σ" give "σ".
QString foldCase(QStringView word);

/// Adds every word of table to sum, for a list of several files.
void addWordTable(WordTable& sum, const WordTable& table);

/// Folds, leaves out the stop words and the words counted fewer than the minimum, in that
/// order. Folded words become one entry written in their most frequent form (of equal
/// counts, the smallest in code-unit order), and stop words are then compared folded. In a
/// table of n-grams (options.ngramLength above 1) an entry goes when its first or its last
/// word is a stop word. With a lemma file, the forms of each headword become one entry
/// after folding and before the stop words (which then compare headwords); forms, when
/// given, gets each such entry's forms. With options that keep every word the table is not
/// touched.
void shapeWordTable(WordTable& table, const WordListOptions& options, LemmaForms* forms = nullptr);

} // namespace tallyvox
