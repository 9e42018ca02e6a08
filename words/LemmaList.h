#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QStringView>

#include <optional>
#include <utility>

namespace tallyvox {

/// The largest lemma file read: the widely shared English one is about 2 MB.
inline constexpr qint64 largestLemmaList = qint64{64} * 1024 * 1024;

/// Word forms and the headword each is counted under, from a lemma file.
struct LemmaList {
    /// Each form, and each headword as a form of itself, with its headword. A form under
    /// two headwords stays with the first.
    QHash<QString, QString> headwordOf;

    /// The headword of an entry (a word, or an n-gram whose words are each looked up), or
    /// nothing when no word of it is a form of the file. key is the entry as it is compared:
    /// folded when the list folds, as the forms then are.
    std::optional<QString> headwordFor(QStringView key) const;
};

/// A lemma file's text: UTF-8, one headword a line, "headword -> form1, form2, ..." ("#"
/// starts a comment to the end of its line, white space around names does not count, a
/// byte-order mark at the start is skipped). A line without "->", or without a headword,
/// says nothing. With fold, forms and the keys are case-folded, headwords written as given.
LemmaList parseLemmaList(const QByteArray& bytes, bool fold);

/// The lemma file that a "LemmaListPath" setting names ("~/" and relative paths start at
/// home); nothing when it is not a regular file that can be read whole, or is larger than
/// largestLemmaList.
std::optional<LemmaList> readLemmaList(const QString& setting, bool fold);

/// The forms of each headword entry of a list, as the table held them, with their counts,
/// the most frequent first (of equal counts, in code-unit order).
using LemmaForms = QHash<QString, QList<std::pair<QString, qint64>>>;

/// "went 4, goes 3": how an entry's forms are written after it.
QString describeForms(const QList<std::pair<QString, qint64>>& forms);

} // namespace tallyvox
