#pragma once

#include "prefs/PreferenceKeys.h"
#include "words/LemmaList.h"
#include "words/WordTable.h"

#include <QByteArray>
#include <QString>

namespace tallyvox {

class WordOrder;

// The word list as a table for spreadsheets and programs ("ListFormat" 1 and 2), and the
// totals line ("IncludeTotals"). Numbers here are ASCII digits whatever the locale, so that
// every program reads them; the plain text list keeps the locale's digits for its counts.

/// Whether a spreadsheet would read a cell starting so as a formula: "=", "+", "-", "@", a
/// tab or a CR first.
bool startsLikeFormula(QStringView text);

/// One CSV field (RFC 4180): in double quotes, with each quote doubled, when it holds a
/// comma, a double quote, a CR or an LF; else as it is. A field that starts like a formula
/// gets an apostrophe in front.
QString csvField(QStringView text);

/// One TSV field: a backslash, tab, CR or LF is written \\, \t, \r or \n, so no word can
/// break a row or a column.
QString tsvField(QStringView text);

/// The list as CSV (header "word,count", CR LF after every row) or TSV (header
/// "word<TAB>count", LF after every row), in UTF-8. The count column is there only when
/// counts is given; a count that does not fit 32 bits leaves its field empty.
/// With forms (a list with a lemma file), a last column "forms" holds each headword's forms
/// as describeForms writes them, empty for other entries.
QByteArray renderTabularList(ListFormat format, const WordOrder& words, const WordOrder* counts,
                             const LemmaForms* forms = nullptr);

/// What the totals line says about a list.
struct ListTotals {
    /// The occurrences of the list's words: the counts it writes, added up.
    qint64 words = 0;
    qint64 distinctWords = 0;
};

/// The totals of a table as its list is written.
ListTotals totalsOf(const WordTable& table);

/// "12 words, 3 distinct words, type/token ratio 0.2500": the ratio is the distinct words
/// over the words, with four decimals and a point (0 for a list whose words count 0).
QString describeTotals(const ListTotals& totals);

/// The totals line of the text and TSV lists, without its line end: "# " and the
/// description. No word begins with "#" (the indexer never makes one), so a reader finds it
/// as the last line that does.
QString totalsLine(const ListTotals& totals);

} // namespace tallyvox
