#include "words/WordList.h"

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "words/IndexerClient.h"
#include "words/Lemmatizer.h"
#include "words/OutputFolder.h"
#include "words/ReferenceCorpus.h"
#include "words/StopList.h"
#include "words/WordTableShaping.h"

#include <QCoreApplication>
#include <QFile>
#include <QFutureWatcher>
#include <QtConcurrent/QtConcurrentRun>

namespace tallyvox {

namespace {

// The output path buffer of the word list; the conversion fails beyond 4095 bytes.
constexpr int outputPathBufferSize = 4096;

Status notWritten(Desktop& desktop, const QString& listName, Status status)
{
    desktop.log(QStringLiteral("The word list \"%1\" could not be written (error %2)")
                    .arg(listName)
                    .arg(status));
    return status;
}

// The rendered text into the list made for it, then the hand-off. No text: the empty list
// stays, and nothing is opened.
Status writeAndOpen(const WordContext& context, const FileRef& output, const QString& listName,
                    const RenderedList& list)
{
    for (const QString& line : list.logLines) {
        context.desktop.log(line);
    }
    if (!list.text) {
        return noErr;
    }
    QByteArray pathBytes;
    if (const Status status = output.makePath(pathBytes, outputPathBufferSize); status != noErr) {
        return notWritten(context.desktop, listName, status);
    }
    // Whole or not at all: a failed write leaves the empty list made before.
    if (const Status status = replaceFileContents(output, *list.text); status != noErr) {
        return notWritten(context.desktop, listName, status);
    }
    OpenInTextEditor(context.desktop, output);
    context.desktop.raiseApplication();
    return noErr;
}

QString quotedName(const QString& name)
{
    return QLatin1Char('"') + name + QLatin1Char('"');
}

// No keyword list without its reference; the alert once for the reference, however many
// lists wanted it.
Status referenceNotRead(const WordContext& context, ReferenceCorpus& reference)
{
    if (reference.takeFailureReport()) {
        context.desktop.alert(
            translated("tallyvox::WordList", unreadableReferenceMessage).arg(reference.setting()));
    }
    return ioErr;
}

std::shared_ptr<ReferenceCorpus> startReference(const WordContext& context, const QString& path,
                                                int ngramLength)
{
    if (path.isEmpty()) {
        return nullptr;
    }
    auto reference = std::make_shared<ReferenceCorpus>(context, path, ngramLength);
    reference->start();
    return reference;
}

// The dictionary "Lemmatize" asks for; one that is not installed is reported once a run
// and the list is made without groups.
void openLemmatizer(const WordContext& context, WordListRun* run, WordListOptions& options)
{
    if (!options.lemmatize) {
        return;
    }
    const QString language = lemmaLanguageOf(options.lemmaLanguage);
    options.lemmatizer = Lemmatizer::open(language);
    // Keyed apart from any file path a run reports.
    if (!options.lemmatizer && (!run || run->firstReportOf(QLatin1Char('\n') + language))) {
        context.desktop.alert(missingDictionaryMessage().arg(language));
    }
}

} // namespace

QString missingDictionaryMessage()
{
    return QCoreApplication::translate(
        "WordList", "No Hunspell dictionary \"%1\" is installed, so the word lists are made "
                    "without grouping word forms. Debian's hunspell packages install "
                    "dictionaries (hunspell-en-us for en_US).");
}

ListSettings listSettingsOfThisMoment(const WordContext& context, WordListRun* run)
{
    ListSettings settings = ListSettings::read(context.preferences);
    WordListOptions& options = settings.options;
    if (options.stopListPath.isEmpty()) {
        // Nothing to read.
    } else if (std::optional<QSet<QString>> words = readStopList(options.stopListPath)) {
        options.stopWords = std::move(*words);
    } else if (!run || run->firstReportOf(options.stopListPath)) {
        context.desktop.alert(
            translated("tallyvox::WordList", unreadableStopListMessage).arg(options.stopListPath));
    }
    if (options.lemmaListPath.isEmpty()) {
        openLemmatizer(context, run, options);
        return settings;
    }
    if (std::optional<LemmaList> lemmas = readLemmaList(options.lemmaListPath, options.foldCase)) {
        options.lemmas = std::make_shared<const LemmaList>(std::move(*lemmas));
    } else if (!run || run->firstReportOf(options.lemmaListPath)) {
        context.desktop.alert(translated("tallyvox::WordList", unreadableLemmaListMessage)
                                  .arg(options.lemmaListPath));
    }
    return settings;
}

WordListJob::WordListJob(const WordContext& context, FileRef file, QString name, WordListRun* run)
    : m_context(context), m_file(std::move(file)), m_name(std::move(name)), m_run(run)
{}

WordListJob::~WordListJob() = default;

void WordListJob::start()
{
    m_combining = m_run && m_run->combining();
    if (m_run) {
        m_run->join(m_context);
        m_reference = m_run->reference();
    }
    if (!m_combining) {
        // A combined list is shaped by the settings of the moment it is written.
        m_settings = listSettingsOfThisMoment(m_context, m_run);
        if (m_run) {
            m_run->applyRunSettings(m_settings.options);
        } else {
            m_reference = startReference(m_context, m_settings.options.referencePath,
                                         m_settings.options.ngramLength);
        }
        // The list is made, empty, before the words are looked for; an earlier list of
        // the same name is replaced by it.
        m_listName = m_name + listExtension(m_settings.options.listFormat);
        m_placement = CreateOutputFile(m_listName, m_output);
        if (m_placement == noErr && !m_output) {
            m_placement = fnfErr;
        }
        if (m_placement != noErr) {
            becomeReady();
            return;
        }
    }
    const int ngramLength = m_run ? m_run->ngramLength() : m_settings.options.ngramLength;
    // Only the totals need the runs, which the indexer counts on one thread.
    const bool typeRuns =
        m_run ? m_run->countsTypeRuns() : m_settings.options.includeTotals && ngramLength == 1;
    m_words = BuildWordTable(m_context, m_file, ngramLength, typeRuns);
    connect(m_words.get(), &WordTableJob::progressed, this, &FileJob::progressed);
    connect(m_words.get(), &WordTableJob::finished, this, &WordListJob::indexed);
}

void WordListJob::stop()
{
    m_stopped = true;
    if (m_words && !m_words->isFinished()) {
        m_words->stop();
    } else if (m_words && m_reference && !m_reference->isFinished()) {
        // Waiting for the reference: a list that will not be written waits for nothing.
        becomeReady();
    }
}

void WordListJob::indexed()
{
    m_partial = m_words->ending() == IndexerEnding::Partial;
    m_failed = m_words->ending() == IndexerEnding::Failed;
    m_table = std::move(m_words->table());
    m_typeRuns = m_words->typeRuns();
    m_stopped = m_stopped || m_words->ending() == IndexerEnding::Stopped;
    if (!m_stopped) {
        m_problem = listProblemOf(m_file.path(), m_words->ending(), !m_table.isEmpty(),
                                  m_words->cutReasons());
    }
    // Every list of a run waits for the reference, so that the combined list has it when
    // the run's files are done.
    if (!m_stopped && m_reference && !m_reference->isFinished()) {
        connect(m_reference.get(), &ReferenceCorpus::finished, this, &WordListJob::proceed);
        return;
    }
    proceed();
}

void WordListJob::proceed()
{
    if (isReady()) {
        return;
    }
    if (m_combining || m_stopped) {
        becomeReady();
        return;
    }
    if (m_reference && !m_reference->table()) {
        m_referenceFailed = true;
        becomeReady();
        return;
    }
    render(std::exchange(m_table, {}));
}

// Ordering and rendering take as long as indexing on a file of distinct words: they run on
// a worker thread, from the table and the settings alone.
void WordListJob::render(WordTable table)
{
    auto* watcher = new QFutureWatcher<RenderedList>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher] {
        m_list = watcher->future().takeResult();
        watcher->deleteLater();
        becomeReady();
    });
    ListSources sources;
    sources.reference = m_reference ? m_reference->table() : nullptr;
    sources.typeRuns = m_typeRuns;
    watcher->setFuture(QtConcurrent::run([table = std::move(table), settings = m_settings,
                                          subject = quotedName(m_name), sources]() mutable {
        return renderWordTable(std::move(table), settings, subject, sources);
    }));
}

Status WordListJob::commit()
{
    if (m_stopped) {
        return noErr;
    }
    if (m_combining) {
        m_run->collect(std::move(m_table), m_name, m_typeRuns);
        return noErr;
    }
    if (m_placement != noErr) {
        return notWritten(m_context.desktop, m_listName, m_placement);
    }
    if (m_referenceFailed) {
        // The empty list made at the start would pass for a keyword list of no keywords.
        QFile::remove(m_output->path());
        return referenceNotRead(m_context, *m_reference);
    }
    return writeAndOpen(m_context, *m_output, m_listName, m_list);
}

void WordListRun::begin(bool combineFiles)
{
    m_combining = combineFiles;
    m_files = 0;
    m_firstName.clear();
    m_sums.clear();
    m_reported.clear();
    m_joined = false;
    m_includeRange = false;
    m_countsTypeRuns = false;
    m_typeRuns = TypeRuns();
    m_referencePath.clear();
    m_reference.reset();
    m_spread.reset();
}

void WordListRun::join(const WordContext& context)
{
    if (std::exchange(m_joined, true)) {
        return;
    }
    m_includeRange = context.preferences.readBool(prefs::IncludeRange);
    m_ngramLength = ngramLengthOf(context.preferences.readInteger(prefs::NGramLength));
    m_referencePath = context.preferences.readString(prefs::ReferencePath);
    m_countsTypeRuns = context.preferences.readBool(prefs::IncludeTotals) && m_ngramLength == 1;
    if (m_combining && m_includeRange) {
        m_spread.emplace();
    }
    m_reference = startReference(context, m_referencePath, m_ngramLength);
}

void WordListRun::applyRunSettings(WordListOptions& options) const
{
    options.includeRange = m_includeRange;
    options.ngramLength = m_ngramLength;
    options.referencePath = m_referencePath;
}

void WordListRun::collect(WordTable table, const QString& name,
                          const std::optional<TypeRuns>& typeRuns)
{
    if (++m_files == 1) {
        m_firstName = name;
    }
    if (m_typeRuns && typeRuns) {
        *m_typeRuns += *typeRuns;
    } else {
        m_typeRuns.reset();
    }
    if (m_spread) {
        m_spread->add(table);
        return;
    }
    // Sums of 1, 2, 4 ... files, merged as a binary counter carries: each word is merged
    // about log2(files) times, where adding every file to one growing sum would merge the
    // whole sum once per file.
    m_sums.push_back({std::move(table), 1});
    while (m_sums.size() >= 2 && m_sums[m_sums.size() - 2].files == m_sums.back().files) {
        Sum last = std::move(m_sums.back());
        m_sums.pop_back();
        addWordTable(m_sums.back().words, last.words);
        m_sums.back().files += last.files;
    }
}

WordTable WordListRun::takeSum()
{
    WordTable words;
    while (!m_sums.empty()) {
        addWordTable(words, m_sums.back().words);
        m_sums.pop_back();
    }
    return words;
}

Status WordListRun::finish(const WordContext& context, bool quitting)
{
    const int files = m_files;
    WordTable words = takeSum();
    const bool combining = std::exchange(m_combining, false);
    const std::optional<WordSpread> spread = std::exchange(m_spread, std::nullopt);
    const std::optional<TypeRuns> typeRuns = std::exchange(m_typeRuns, TypeRuns());
    m_files = 0;
    m_joined = false;
    if (!combining || quitting || files == 0) {
        return noErr;
    }
    ListSettings settings = listSettingsOfThisMoment(context, this);
    applyRunSettings(settings.options);
    ListSources sources;
    if (m_reference) {
        sources.reference = m_reference->table();
        if (!sources.reference) {
            return referenceNotRead(context, *m_reference);
        }
    }
    if (spread) {
        words = spread->sum();
        sources.spread = &*spread;
    }
    sources.files = files;
    sources.typeRuns = typeRuns;
    const bool ofSeveralFiles = files > 1;
    const QString name = ofSeveralFiles ? QLatin1String(combinedListName) : m_firstName;
    const QString listName = name + listExtension(settings.options.listFormat);
    std::optional<FileRef> output;
    const Status status = ofSeveralFiles ? createCombinedListFile(listName, output)
                                         : CreateOutputFile(listName, output);
    if (status != noErr || !output) {
        return notWritten(context.desktop, listName, status != noErr ? status : fnfErr);
    }
    const QString subject =
        ofSeveralFiles ? QStringLiteral("%1 files").arg(files) : quotedName(m_firstName);
    return writeAndOpen(context, *output, listName,
                        renderWordTable(std::move(words), settings, subject, sources));
}

bool WordListRun::firstReportOf(const QString& stopListPath)
{
    if (m_reported.contains(stopListPath)) {
        return false;
    }
    m_reported.insert(stopListPath);
    return true;
}

} // namespace tallyvox
