#include "shell/ConsoleMode.h"

#include "prefs/PreferenceStore.h"
#include "services/ServiceDispatcher.h"
#include "services/TemporaryFile.h"
#include "shell/BatchRunner.h"
#include "shell/CommandLine.h"
#include "shell/ConsoleDesktop.h"
#include "shell/ConsoleView.h"
#include "shell/Extraction.h"
#include "shell/JobQueue.h"
#include "shell/ServiceActions.h"
#include "shell/TemporaryFolderLease.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QIODevice>
#include <QTextStream>

namespace tallyvox {

namespace {

using namespace std::chrono_literals;

// Long enough to paste by hand; a clipboard manager takes its copy at once.
constexpr auto clipboardHoldLimit = 10s;

bool isSelection(ServiceSource source)
{
    return source == ServiceSource::Selection || source == ServiceSource::Clipboard;
}

// Standard input larger than a selection, for a service that only indexes it: copied as it
// comes into the temporary file that the text would have been written to, and handed over
// as that file, so that the input is never held whole and its bytes reach the indexer as
// they are. Smaller input, and every other service, take the text path (nothing here).
std::optional<Pasteboard> streamStandardInput(const ServiceContext& context,
                                              const QString& serviceName, QIODevice& input)
{
    const ProcessMode mode = ServiceModeForMessage(serviceName);
    if (mode != ProcessMode::ExtractWords && mode != ProcessMode::WordCount) {
        return std::nullopt;
    }
    constexpr qint64 textPathLimit = qint64(1) << 20;
    QByteArray head = input.read(textPathLimit);
    const QByteArray next = input.read(textPathLimit);
    std::optional<FileRef> file;
    if (next.isEmpty()) {
        // What was read is all there is: the ordinary text path, from memory.
        return pasteboardWithBytes(head);
    }
    head += next;
    if (!writeStreamToTemporaryFile(context.words.temporaryFolder, head, input, file)) {
        context.words.desktop.log(QStringLiteral("Standard input could not be copied"));
        return Pasteboard{};
    }
    return pasteboardWithFile(file->path());
}

// The service of the command line, performed here: the process ends with it, so there is
// no quit timer to arm.
int runService(ConsoleDesktop& desktop, const WordContext& words, const CommandLine& commandLine,
               const ConsoleStreams& streams)
{
    const ServiceContext context{words, {}};
    std::optional<Pasteboard> streamed;
    if (commandLine.serviceSource == ServiceSource::Stdin) {
        streamed = streamStandardInput(context, commandLine.serviceName, streams.input);
    }
    const QList<Pasteboard> pasteboards =
        streamed ? QList<Pasteboard>{*streamed}
                 : commandLinePasteboards(commandLine, desktop, streams.input);
    JobQueue jobs;
    ServiceActions actions(context, jobs);
    for (const Pasteboard& pasteboard : pasteboards) {
        if (pasteboard.isEmpty() && isSelection(commandLine.serviceSource)) {
            streams.err << QCoreApplication::translate("tallyvox::ConsoleMode",
                                                       "tallyvox: the selection holds nothing\n");
            streams.err.flush();
        }
        actions.add({commandLine.serviceName, pasteboard});
    }
    if (jobs.isBusy()) {
        QEventLoop loop;
        QObject::connect(&jobs, &JobQueue::idle, &loop, &QEventLoop::quit);
        loop.exec();
    }
    desktop.holdClipboard(clipboardHoldLimit);
    return actions.anyFailed() || desktop.failureReported() ? 1 : 0;
}

int runBatch(ConsoleDesktop& desktop, const WordContext& words, const CommandLine& commandLine)
{
    ConsoleView view(desktop);
    JobQueue jobs;
    BatchRunner batch(view, words, jobs);
    batch.setConcurrency(filesAtOnce());
    QEventLoop loop;
    // No window to wait for: the run's end is the end of console mode.
    QObject::connect(&batch, &BatchRunner::runEnded, &loop, &QEventLoop::quit);
    batch.queueDocuments(commandLine.files);
    loop.exec();
    if (view.errorShown() || batch.listFailed() || desktop.failureReported()) {
        return 1;
    }
    return batch.wordsLost() ? wordsLostStatus : 0;
}

} // namespace

int runConsoleMode(const CommandLine& commandLine, const ConsoleStreams& streams, Indexer* indexer)
{
    // Made here rather than by the factory: only console mode holds the clipboard.
    ConsoleDesktop desktop(streams.out, streams.err, commandLine.saveAsPath);
    const PreferenceStore preferences;
    if (const std::optional<QString> refused = preferences.refusal()) {
        desktop.alert(*refused);
    }
    const TemporaryFolderLease temporary;
    temporary.prepare(desktop);
    const Extraction extraction(desktop, preferences, temporary, nullptr, indexer);
    if (!commandLine.serviceName.isEmpty()) {
        return runService(desktop, extraction.context(), commandLine, streams);
    }
    return runBatch(desktop, extraction.context(), commandLine);
}

} // namespace tallyvox
