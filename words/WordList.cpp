#include "words/WordList.h"

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "words/IndexerClient.h"
#include "words/OutputFolder.h"
#include "words/StopList.h"
#include "words/WordListOptions.h"
#include "words/WordListRenderer.h"
#include "words/WordTableShaping.h"

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

// The options of this moment, with the stop list's words. A stop list that cannot be read
// is reported (once a run) and the list is made without it.
WordListOptions optionsOfThisMoment(const WordContext& context)
{
    WordListOptions options = WordListOptions::read(context.preferences);
    if (options.stopListPath.isEmpty()) {
        return options;
    }
    if (std::optional<QSet<QString>> words = readStopList(options.stopListPath)) {
        options.stopWords = std::move(*words);
    } else if (!context.run || context.run->firstReportOf(options.stopListPath)) {
        context.desktop.alert(
            QString::fromUtf16(unreadableStopListMessage).arg(options.stopListPath));
    }
    return options;
}

// The rendered text into the list made for it, then the hand-off. No text: the empty list
// stays, and nothing is opened.
Status writeAndOpen(const WordContext& context, const FileRef& output, const QString& listName,
                    const std::optional<QByteArray>& text)
{
    if (!text) {
        return noErr;
    }
    QByteArray pathBytes;
    if (const Status status = output.makePath(pathBytes, outputPathBufferSize); status != noErr) {
        return notWritten(context.desktop, listName, status);
    }
    // Whole or not at all: a failed write leaves the empty list made before.
    if (const Status status = replaceFileContents(output, *text); status != noErr) {
        return notWritten(context.desktop, listName, status);
    }
    OpenInTextEditor(context.desktop, output);
    context.desktop.raiseApplication();
    return noErr;
}

// A list made from a table the run collected, in the output folder or, for several files,
// in the folder of combined lists.
Status writeCollectedList(const WordContext& context, WordTable table, const QString& name,
                          const QString& subject, bool ofSeveralFiles)
{
    const WordListOptions options = optionsOfThisMoment(context);
    const QString listName = name + listExtension(options.listFormat);
    std::optional<FileRef> output;
    const Status status = ofSeveralFiles ? createCombinedListFile(listName, output)
                                         : CreateOutputFile(listName, output);
    if (status != noErr || !output) {
        return notWritten(context.desktop, listName, status != noErr ? status : fnfErr);
    }
    const PreferenceStore& preferences = context.preferences;
    const std::optional<QByteArray> text = renderWordTable(
        context, std::move(table), subject, preferences.GetLineStyle(), preferences.GetSeparateBy(),
        preferences.GetSortBy() == SortBy::Alphabetical, options);
    return writeAndOpen(context, *output, listName, text);
}

} // namespace

Status writeWordList(const WordContext& context, const FileRef& file, const QString& name)
{
    if (context.run && context.run->combining()) {
        context.run->collect(context, file, name);
        return noErr;
    }

    const WordListOptions options = optionsOfThisMoment(context);
    const QString listName = name + listExtension(options.listFormat);
    std::optional<FileRef> output;
    if (const Status status = CreateOutputFile(listName, output); status != noErr || !output) {
        return notWritten(context.desktop, listName, status != noErr ? status : fnfErr);
    }

    const PreferenceStore& preferences = context.preferences;
    const LineStyle lineStyle = preferences.GetLineStyle();
    const SeparateBy separateBy = preferences.GetSeparateBy();
    const bool alphabetical = preferences.GetSortBy() == SortBy::Alphabetical;
    const std::optional<QByteArray> text =
        RenderWordList(context, file, lineStyle, separateBy, alphabetical, options);
    return writeAndOpen(context, *output, listName, text);
}

void WordListRun::begin(bool combineFiles)
{
    m_combining = combineFiles;
    m_files = 0;
    m_firstName.clear();
    m_words.clear();
    m_reported.clear();
}

void WordListRun::collect(const WordContext& context, const FileRef& file, const QString& name)
{
    WordTable table = BuildWordTable(context, file);
    if (++m_files == 1) {
        m_firstName = name;
        m_words = std::move(table);
    } else {
        addWordTable(m_words, table);
    }
}

Status WordListRun::finish(const WordContext& context, bool quitting)
{
    const int files = m_files;
    WordTable words = std::exchange(m_words, {});
    const bool combining = std::exchange(m_combining, false);
    m_files = 0;
    if (!combining || quitting || files == 0) {
        return noErr;
    }
    if (files == 1) {
        return writeCollectedList(context, std::move(words), m_firstName,
                                  QLatin1Char('"') + m_firstName + QLatin1Char('"'), false);
    }
    return writeCollectedList(context, std::move(words), QLatin1String(combinedListName),
                              QStringLiteral("%1 files").arg(files), true);
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
