#pragma once

#include "support/FileRef.h"
#include "words/WordContext.h"
#include "words/WordTable.h"

#include <QSet>
#include <QString>

#include <optional>

namespace tallyvox {

/// The word list of one file, start to end: a fresh, empty "<name>.txt" in the output
/// folder, the words indexed, ordered and rendered with the settings of this moment,
/// written as UTF-8, handed to the text editor, and the application raised again. A file
/// without words leaves the empty list and opens nothing (noErr). A list that could not be
/// placed or written opens nothing either: its status is returned and one line logged.
/// The word-list options may end the name in ".csv" or ".tsv" instead, and in a run that
/// combines its files (context.run) the words are only collected for the run's list.
Status writeWordList(const WordContext& context, const FileRef& file, const QString& name);

/// The name of the list of several files, in combinedListFolder, before its extension.
inline constexpr char combinedListName[] = "Combined word list";

/// The alert for a stop list that cannot be read.
inline constexpr char16_t unreadableStopListMessage[] =
    u"The stop list \"%1\" cannot be read, so the word lists are made without it.";

/// One batch run of word lists. It reports a stop list that cannot be read once, however
/// many lists the run makes, and with "CombineFiles" it sums the words of the run's files
/// and writes one list of them when the run's files are done.
class WordListRun {
public:
    /// A run begins: whatever the last one reported or collected is forgotten.
    void begin(bool combineFiles);

    /// True while the run's files go into one list.
    bool combining() const { return m_combining; }

    /// Indexes the file and adds its words to the run's list.
    void collect(const WordContext& context, const FileRef& file, const QString& name);

    /// The run's files are done: the list of everything collected is written and opened,
    /// in combinedListFolder as combinedListName, or as the one file's own list when only
    /// one was collected. Nothing is written when the run collected nothing, does not
    /// combine, or was ended by Quit (quitting), which cuts the file in progress short.
    /// The status is that of a list that could not be written, else noErr.
    Status finish(const WordContext& context, bool quitting);

    /// True the first time in this run that this stop list cannot be read.
    bool firstReportOf(const QString& stopListPath);

private:
    bool m_combining = false;
    int m_files = 0;
    /// The first file's name, for a run that collects only it.
    QString m_firstName;
    WordTable m_words;
    QSet<QString> m_reported;
};

} // namespace tallyvox
