#pragma once

#include "support/FileRef.h"
#include "support/Translation.h"
#include "words/FileJob.h"
#include "words/ListSettings.h"
#include "words/WordContext.h"
#include "words/WordListRenderer.h"
#include "words/WordSpread.h"
#include "words/WordTable.h"

#include <QSet>
#include <QString>

#include <memory>
#include <optional>
#include <vector>

namespace tallyvox {

class ReferenceCorpus;
class WordListRun;
class WordTableJob;

/// The name of the list of several files, in combinedListFolder, before its extension.
inline constexpr char combinedListName[] = "Combined word list";

/// The alert for a stop list that cannot be read.
inline constexpr char16_t unreadableStopListMessage[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::WordList",
    "The stop list \"%1\" cannot be read, so the word lists are made without it.");

/// The alert for a lemma file that cannot be read.
inline constexpr char16_t unreadableLemmaListMessage[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::WordList",
    "The lemma list \"%1\" cannot be read, so the word lists are made without it.");

/// The alert for a "LemmaLanguage" dictionary that is not installed; %1 is its name.
QString missingDictionaryMessage();

/// The alert for a keyword list's reference that cannot be read.
inline constexpr char16_t unreadableReferenceMessage[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::WordList", "The reference \"%1\" cannot be read, so no keyword list is made.");

/// The word list of one file, start to end. start() reads the settings once, makes a
/// fresh, empty "<name>.txt" in the output folder, and has the words indexed, then ordered
/// and rendered on a worker thread. commit() writes the text as UTF-8, hands the list to
/// the text editor and raises the application. A file without words leaves the empty list
/// and opens nothing (noErr). A list that could not be placed or written opens nothing
/// either: its status is returned and one line logged. The word-list options may end the
/// name in ".csv" or ".tsv" instead, and in a run that combines its files the job only
/// hands its table to the run. With a reference (a keyword list) the job is ready only once
/// the reference is read: the run's, or for a list outside a run one of its own; a
/// reference that cannot be read gives one alert and no list, the empty one removed.
class WordListJob final : public FileJob {
    Q_OBJECT
public:
    /// run: the batch run the list belongs to, or none (a service's list is a run of its own).
    WordListJob(const WordContext& context, FileRef file, QString name, WordListRun* run = nullptr);
    ~WordListJob() override;
    WordListJob(const WordListJob&) = delete;
    WordListJob& operator=(const WordListJob&) = delete;

    void start() override;
    void stop() override;
    Status commit() override;

    bool failed() const override { return m_failed; }
    /// True when the indexer left a table cut short by one of its limits.
    bool partial() const { return m_partial; }
    ListProblem problem() const override { return m_problem; }

private:
    void indexed();
    /// The words are in and the reference, if any, is read.
    void proceed();
    void render(WordTable table);

    WordContext m_context;
    FileRef m_file;
    QString m_name;
    WordListRun* m_run;
    ListSettings m_settings;
    bool m_combining = false;
    bool m_partial = false;
    bool m_failed = false;
    bool m_stopped = false;
    bool m_referenceFailed = false;
    ListProblem m_problem;
    Status m_placement = noErr;
    QString m_listName;
    std::optional<FileRef> m_output;
    std::unique_ptr<WordTableJob> m_words;
    std::shared_ptr<ReferenceCorpus> m_reference;
    /// The table, kept for a combining run or while the reference is read.
    WordTable m_table;
    /// The standardised type/token ratio's runs, when the totals asked for them.
    std::optional<TypeRuns> m_typeRuns;
    RenderedList m_list;
};

/// The settings of this moment for a list, with the stop list's words and the lemma
/// file's groups. A file of them that cannot be read is reported (once a run, when there
/// is one) and the list is made without it.
ListSettings listSettingsOfThisMoment(const WordContext& context, WordListRun* run);

/// One batch run of word lists. It reports a stop list that cannot be read once, however
/// many lists the run makes, and with "CombineFiles" it sums the words of the run's files
/// and writes one list of them when the run's files are done.
class WordListRun {
public:
    /// A run begins: whatever the last one reported or collected is forgotten.
    void begin(bool combineFiles);

    /// True while the run's files go into one list.
    bool combining() const { return m_combining; }

    /// A list of the run begins. The first reads what decides what the run collects:
    /// "IncludeRange" (the files are then kept word by word), "NGramLength" (what the
    /// files' tables count) and "ReferencePath" (whose reading then starts). Every list of
    /// the run takes these from here.
    void join(const WordContext& context);
    /// Sets the run's range and reference in options, which are otherwise the list's own.
    void applyRunSettings(WordListOptions& options) const;
    /// The words an entry of the run's lists is a sequence of ("NGramLength" when it joined).
    int ngramLength() const { return m_ngramLength; }
    /// True when the run's files are to count the standardised type/token ratio's runs,
    /// for the totals ("IncludeTotals" when it joined, of single words).
    bool countsTypeRuns() const { return m_countsTypeRuns; }
    /// The run's reference, none without one.
    const std::shared_ptr<ReferenceCorpus>& reference() const { return m_reference; }

    /// Adds a file's words to the run's list; files are added in the order given. typeRuns
    /// are the file's, none when it did not count them.
    void collect(WordTable table, const QString& name,
                 const std::optional<TypeRuns>& typeRuns = std::nullopt);

    /// The run's files are done: the list of everything collected is written and opened,
    /// in combinedListFolder as combinedListName, or as the one file's own list when only
    /// one was collected. Nothing is written when the run collected nothing, does not
    /// combine, or was ended by Quit (quitting), which cuts the file in progress short.
    /// The status is that of a list that could not be written, else noErr.
    Status finish(const WordContext& context, bool quitting);

    /// True the first time in this run that this stop list cannot be read.
    bool firstReportOf(const QString& stopListPath);

private:
    /// Everything collected, as one table; the run's sums are emptied.
    WordTable takeSum();

    bool m_combining = false;
    int m_files = 0;
    /// The first file's name, for a run that collects only it.
    QString m_firstName;
    /// The files' words, as sums of runs of files whose sizes are falling powers of two.
    struct Sum {
        WordTable words;
        int files = 0;
    };
    std::vector<Sum> m_sums;
    QSet<QString> m_reported;
    bool m_joined = false;
    bool m_includeRange = false;
    int m_ngramLength = 1;
    bool m_countsTypeRuns = false;
    /// The collected files' type/token runs added up; none once a file came without.
    std::optional<TypeRuns> m_typeRuns = TypeRuns();
    QString m_referencePath;
    std::shared_ptr<ReferenceCorpus> m_reference;
    /// The files word by word, when the run combines them with range and dispersion.
    std::optional<WordSpread> m_spread;
};

} // namespace tallyvox
