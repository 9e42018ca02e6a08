#pragma once

#include "support/FileRef.h"
#include "support/Status.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>

namespace tallyvox {

class BatchView;
class Desktop;
class IndexerProgress;
class PreferenceStore;
class WorkGate;

/// What the run does with each file (extracting its words in the application).
using FileProcessor = std::function<void(const FileRef& file)>;

/// The texts the batch run shows.
namespace batchTexts {
inline constexpr char16_t helpText[] =
    u"Use File > Open, or drop one or more files on this window or the app icon in the "
    u"Finder or Dock to extract words.";
inline constexpr char16_t fileStatus[] = u"File: %1";
inline constexpr char16_t errorWindowText[] =
    u"An error occurred while launching \"%1\"   (Error code: %2)";
inline constexpr char16_t notAFileMessage[] =
    u"One or more items you dropped on Tallyvox was not a file.";
inline constexpr char16_t notAFileExplanation[] = u"Tallyvox only extracts words from files.";
// The progress text while one file takes a while, and once the stop button was heard.
inline constexpr char16_t filePercent[] = u"%1: %2% read";
inline constexpr char16_t fileReading[] = u"%1: reading\u2026";
inline constexpr char16_t stopping[] = u"Stopping after this file\u2026";
inline constexpr char16_t fileStopping[] = u"%1 \u2014 stopping after this file\u2026";
} // namespace batchTexts

/// The open-documents queue and the batch run over it. Every way in (launch
/// arguments, the bus, the Open dialog, a drop) replaces the pending list and starts
/// a run a millisecond later, outside the code that delivered the files. With a gate, a
/// run that is due while other work holds it starts when that work is done.
class BatchRunner : public QObject {
    Q_OBJECT
public:
    BatchRunner(BatchView& view, Desktop& desktop, const PreferenceStore& preferences,
                FileProcessor processor, WorkGate* gate = nullptr, QObject* parent = nullptr);

    /// Files arriving from outside: brings the application forward, then queues them.
    void openDocuments(const QStringList& paths);
    /// Replaces the pending list and schedules a run. While a run is in progress the
    /// files are held instead (it reads its list by index) and run when it ends.
    void queueDocuments(const QStringList& paths);
    /// Starts a run 1 ms from now; arming it again before it fires keeps one run.
    void scheduleBatchRun();
    /// Processes every pending item with progress, then reports and maybe quits.
    void runBatch();

    /// The stop button: the run ends before its next file, and says so at once.
    void requestCancel();
    /// Shows how far the indexer has read a file that takes longer than half a second.
    void showIndexerProgress(IndexerProgress& progress);
    /// Quit: no further file is begun in this process.
    void requestQuit() { m_quitRequested = true; }
    bool quitRequested() const { return m_quitRequested; }
    bool isRunning() const { return m_running; }
    const QStringList& pendingDocuments() const { return m_pending; }

signals:
    /// A run begins, before its first file. combineFiles: "CombineFiles" was on as it began,
    /// so the files' words go into one list, which the application writes at filesDone.
    void runStarted(bool combineFiles);
    /// The run's loop is over: every file had its turn, or the stop button or Quit
    /// (quitting) ended it. Emitted before the run's reports.
    void filesDone(bool quitting);
    /// A run has ended (after its reports).
    void runEnded();
    /// One second after a run with "QuitWhenDone" set.
    void farewellDue();

private:
    void beginFileProgress(const QString& name);
    void endFileProgress();
    void showFileProgress();

    BatchView& m_view;
    Desktop& m_desktop;
    const PreferenceStore& m_preferences;
    FileProcessor m_processor;
    WorkGate* m_gate;
    QTimer m_startTimer;
    QStringList m_pending;
    QStringList m_held;
    std::optional<FileRef> m_current;
    bool m_cancelRequested = false;
    bool m_quitRequested = false;
    bool m_running = false;
    bool m_waitingForGate = false;
    // The file in progress: its name, whether it has taken long enough to show its progress,
    // and the indexer's last report.
    QString m_fileName;
    QTimer m_progressDelay;
    bool m_fileInProgress = false;
    bool m_fileSlow = false;
    std::optional<std::pair<quint64, quint64>> m_fileRead;
    bool m_progressShown = false;
};

} // namespace tallyvox
