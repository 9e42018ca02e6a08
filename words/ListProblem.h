#pragma once

#include "words/Indexer.h"

#include <QString>

namespace tallyvox {

/// Why a file's word list came out empty or cut short, in terms a user understands.
struct ListProblem {
    enum class Kind {
        /// The list holds the file's words.
        None,
        /// The file holds nothing at all.
        Empty,
        /// A document Tallyvox reads, with no words in it.
        NoWords,
        /// The user may not read the file.
        NoPermission,
        /// The document needs a password.
        PasswordProtected,
        /// The file is of a kind Tallyvox does not read (an image, a program ...).
        NotADocument,
        /// The path is longer than the indexers take.
        PathTooLong,
        /// Neither indexer could read the file, for no reason that can be told.
        NotRead,
        /// The list holds words, but a limit cut the document short.
        Cut,
    };
    Kind kind = Kind::None;
    /// For Cut: the limits, as the indexer named them.
    QString cutReasons;

    bool isProblem() const { return kind != Kind::None; }
    /// True when the list is empty although the file may hold words: the file could not be
    /// read, rather than being empty of text.
    bool lostWords() const
    {
        return kind == Kind::NoPermission || kind == Kind::PasswordProtected ||
               kind == Kind::NotADocument || kind == Kind::PathTooLong || kind == Kind::NotRead;
    }
    bool operator==(const ListProblem&) const = default;
};

/// What went wrong with the list of the file at path, from how its indexing ended, whether
/// it gave any words and, when it gave none, a look at the file itself.
ListProblem listProblemOf(const QString& path, IndexerEnding ending, bool gaveWords,
                          const QString& cutReasons);

/// Why the file at path gave no words: its permissions, its size, a password that its
/// header or trailer asks for, or its content type.
ListProblem::Kind whyNoWords(const QString& path);

} // namespace tallyvox
