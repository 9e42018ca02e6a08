#pragma once

#include "support/FileRef.h"
#include "support/Status.h"
#include "support/Translation.h"
#include "words/WordContext.h"
#include "words/WordList.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <memory>
#include <optional>

namespace tallyvox {

class BatchView;
class Desktop;
class FileJob;
class JobQueue;

/// The texts the batch run shows.
namespace batchTexts {
inline constexpr char context[] = "tallyvox::BatchRunner";
// The help text names this desktop's places: the file manager, not another platform's
// icon in its dock. The same text at first start and after every run.
inline constexpr char16_t helpText[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::BatchRunner",
    "Use File > Open, drop one or more files on this window, or open them with Tallyvox "
    "from the file manager to extract words.");
inline constexpr char16_t fileStatus[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "File: %1");
inline constexpr char16_t errorWindowText[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::BatchRunner", "An error occurred while launching \"%1\"   (Error code: %2)");
inline constexpr char16_t notAFileMessage[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::BatchRunner", "One or more items you dropped on Tallyvox was not a file.");
inline constexpr char16_t notAFileExplanation[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "Tallyvox only extracts words from files.");
// The progress text while one file takes a while, and once the stop button was heard.
inline constexpr char16_t filePercent[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "%1: %2% read");
inline constexpr char16_t fileReading[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "%1: reading\u2026");
inline constexpr char16_t stopping[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "Stopping after this file\u2026");
inline constexpr char16_t fileStopping[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "%1 \u2014 stopping after this file\u2026");
// After the run, one alert for the lists that came out empty or cut short, and why.
inline constexpr char16_t emptyList[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "The word list of \"%1\" is empty: %2.");
inline constexpr char16_t cutList[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "The word list of \"%1\" is incomplete: %2.");
inline constexpr char16_t troubledLists[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::BatchRunner", "Some word lists are empty or incomplete: %1.");
inline constexpr char16_t troubledList[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "\"%1\" (%2)");
inline constexpr char16_t emptyFile[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "the file is empty");
inline constexpr char16_t noWords[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "the document holds no words");
inline constexpr char16_t noPermission[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "the file cannot be read (permission denied)");
inline constexpr char16_t passwordProtected[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "the document is password-protected");
inline constexpr char16_t notADocument[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "the file is not a document Tallyvox reads");
inline constexpr char16_t pathTooLong[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::BatchRunner", "its path is longer than Tallyvox can read (254 bytes)");
inline constexpr char16_t notRead[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "the file could not be read");
inline constexpr char16_t cutAtLimit[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "it was cut at a limit");
inline constexpr char16_t cutAtLimits[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::BatchRunner", "it was cut at a limit (%1)");
} // namespace batchTexts

/// The open-documents queue and the batch run over it. Every way in (launch arguments,
/// the bus, the Open dialog, a drop) replaces the pending list and starts a run a
/// millisecond later, outside the code that delivered the files; the run takes its turn
/// in the application's job queue. A run indexes up to setConcurrency's files at once, yet
/// begins them, shows them, writes their lists, hands them to the editor and reports them
/// in the order they were given. Stop and Quit are heard before each file is begun.
class BatchRunner : public QObject {
    Q_OBJECT
public:
    BatchRunner(BatchView& view, const WordContext& context, JobQueue& queue,
                QObject* parent = nullptr);
    ~BatchRunner() override;
    BatchRunner(const BatchRunner&) = delete;
    BatchRunner& operator=(const BatchRunner&) = delete;

    /// Files arriving from outside: brings the application forward, then queues them.
    void openDocuments(const QStringList& paths);
    /// Replaces the pending list and schedules a run of it.
    void queueDocuments(const QStringList& paths);
    /// Starts a run 1 ms from now; arming it again before it fires keeps one run.
    void scheduleBatchRun();
    /// The timer's action: the pending list becomes a run in the job queue.
    void runBatch();

    /// The stop button: no further file is begun, and the window says so at once.
    void requestCancel();
    /// Quit: no further file is begun in this process, and the files in hand are ended.
    void requestQuit();
    bool isRunning() const { return m_running; }

    /// Files indexed at once; at least 1.
    void setConcurrency(int files);
    /// True once a file of a run could not be processed (neither indexer gave its words)
    /// or its list could not be written, in this process.
    bool listFailed() const { return m_listFailed; }
    /// True once a list of a run came out empty although its file may hold words: it could
    /// not be read, is password-protected or is not a document, in this process.
    bool wordsLost() const { return m_wordsLost; }

signals:
    /// A run has ended (after its reports).
    void runEnded();
    /// One second after a run with "QuitWhenDone" set.
    void farewellDue();

private:
    struct Item {
        QString name;
        std::unique_ptr<FileJob> job;
        /// The indexer's last report for the file: bytes read and the total.
        std::optional<std::pair<quint64, quint64>> read;
    };

    void beginRun(const QStringList& items, std::function<void()> done);
    void pump();
    void beginItem(qsizetype index);
    void commitReady();
    void endRun();
    void frontChanged();
    void showFileProgress();
    void reportTroubledLists();

    BatchView& m_view;
    WordContext m_context;
    JobQueue& m_queue;
    int m_concurrency = 1;
    QTimer m_startTimer;
    QStringList m_pending;
    bool m_cancelRequested = false;
    bool m_quitRequested = false;
    bool m_listFailed = false;
    bool m_wordsLost = false;

    // The run in hand.
    bool m_running = false;
    QStringList m_items;
    qsizetype m_nextItem = 0;
    int m_progress = 0;
    Status m_error = noErr;
    bool m_nonFileGiven = false;
    std::optional<FileRef> m_current;
    /// The name of the last item that could not be read as a file.
    QString m_failedName;
    /// The files of the run whose lists came out empty or cut short, in order, and why.
    QList<std::pair<QString, ListProblem>> m_troubled;
    std::deque<Item> m_inFlight;
    WordListRun m_listRun;
    std::function<void()> m_done;

    // The file at the head of the run, which the window shows: whether it has taken long
    // enough to show how far it has been read.
    QTimer m_progressDelay;
    bool m_fileSlow = false;
    bool m_progressShown = false;
};

} // namespace tallyvox
