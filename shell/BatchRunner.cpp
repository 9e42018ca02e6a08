#include "shell/BatchRunner.h"

#include "prefs/PreferenceStore.h"
#include "shell/BatchView.h"
#include "shell/PlainFolder.h"
#include "shell/WorkGate.h"
#include "support/Desktop.h"
#include "support/IndexerProgress.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace tallyvox {

namespace {

// A name that cannot be read ends the process on the spot, without saving anything:
// the run has lost track of its files and nothing it would write can be trusted.
[[noreturn]] void exitToShell()
{
    std::fflush(stdout);
    std::_Exit(EXIT_FAILURE);
}

// A file done sooner than this shows no progress of its own; the list of files does.
constexpr int progressDelayMilliseconds = 500;

} // namespace

BatchRunner::BatchRunner(BatchView& view, Desktop& desktop, const PreferenceStore& preferences,
                         FileProcessor processor, WorkGate* gate, QObject* parent)
    : QObject(parent), m_view(view), m_desktop(desktop), m_preferences(preferences),
      m_processor(std::move(processor)), m_gate(gate)
{
    m_startTimer.setSingleShot(true);
    m_startTimer.setInterval(1);
    connect(&m_startTimer, &QTimer::timeout, this, &BatchRunner::runBatch);
    m_progressDelay.setSingleShot(true);
    m_progressDelay.setInterval(progressDelayMilliseconds);
    connect(&m_progressDelay, &QTimer::timeout, this, [this] {
        m_fileSlow = true;
        showFileProgress();
    });
    if (m_gate) {
        connect(m_gate, &WorkGate::released, this, [this] {
            if (std::exchange(m_waitingForGate, false)) {
                scheduleBatchRun();
            }
        });
    }
}

void BatchRunner::showIndexerProgress(IndexerProgress& progress)
{
    connect(&progress, &IndexerProgress::progressed, this, [this](quint64 done, quint64 total) {
        if (m_fileInProgress) {
            m_fileRead = {done, total};
            if (m_fileSlow) {
                showFileProgress();
            }
        }
    });
}

void BatchRunner::requestCancel()
{
    m_cancelRequested = true;
    // The run still finishes the file in hand; the user sees at once that the click counted.
    if (m_running) {
        showFileProgress();
    }
}

void BatchRunner::beginFileProgress(const QString& name)
{
    m_fileName = name;
    m_fileRead.reset();
    m_fileInProgress = true;
    m_fileSlow = false;
    m_progressDelay.start();
}

void BatchRunner::endFileProgress()
{
    m_progressDelay.stop();
    m_fileInProgress = false;
    if (std::exchange(m_progressShown, false) && !m_cancelRequested) {
        m_view.showStatus(QString(), StatusTarget::ProgressText);
    }
}

void BatchRunner::showFileProgress()
{
    QString text;
    if (m_fileInProgress && m_fileSlow) {
        if (m_fileRead && m_fileRead->second > 0) {
            const quint64 percent =
                std::min<quint64>(100, m_fileRead->first * 100 / m_fileRead->second);
            text = QString::fromUtf16(batchTexts::filePercent)
                       .arg(m_fileName, QString::number(percent));
        } else {
            text = QString::fromUtf16(batchTexts::fileReading).arg(m_fileName);
        }
    }
    if (m_cancelRequested) {
        text = text.isEmpty() ? QString::fromUtf16(batchTexts::stopping)
                              : QString::fromUtf16(batchTexts::fileStopping).arg(text);
    }
    m_progressShown = true;
    m_view.showStatus(text, StatusTarget::ProgressText);
}

void BatchRunner::openDocuments(const QStringList& paths)
{
    m_desktop.raiseApplication();
    queueDocuments(paths);
}

void BatchRunner::queueDocuments(const QStringList& paths)
{
    if (m_running) {
        m_held.append(paths);
        return;
    }
    m_pending = paths;
    scheduleBatchRun();
}

void BatchRunner::scheduleBatchRun()
{
    m_startTimer.start();
}

void BatchRunner::runBatch()
{
    if (m_running) {
        return; // the run in progress picks up held files when it ends
    }
    // A service is being performed (in an alert, say): the run waits for its turn.
    if (m_gate && !m_gate->tryEnter()) {
        m_waitingForGate = true;
        return;
    }
    m_running = true;
    m_cancelRequested = false;
    m_view.setRunning(true);
    emit runStarted(m_preferences.readBool(prefs::CombineFiles));

    const qsizetype count = m_pending.size();
    // Computed in 16 bits as the progress control takes it; an empty list gives -1.
    m_view.setProgressMaximum(static_cast<qint16>(count - 1));
    m_view.setProgressMinimum(0);
    m_view.setProgressVisible(true);

    Status error = noErr;
    bool nonFileGiven = false;
    int progress = 0;
    for (qsizetype i = 0; i < count; ++i) {
        if (m_cancelRequested || m_quitRequested) {
            break;
        }
        // The bar's maximum is count - 1 yet the first item already shows 1, so it is
        // full from the second-to-last item on. Intended.
        ++progress;
        m_view.setProgressValue(progress);

        std::optional<FileRef> file = FileRef::fromPath(m_pending.at(i));
        if (!file) {
            error = fnfErr;
            continue;
        }
        error = noErr;
        m_current = file;
        if (IsPlainFolder(*file)) {
            nonFileGiven = true;
            continue;
        }
        const std::optional<QString> name = CopyFileName(*file);
        if (!name) {
            exitToShell();
        }
        m_view.showStatus(QString::fromUtf16(batchTexts::fileStatus).arg(*name),
                          StatusTarget::StatusText);
        beginFileProgress(*name);
        m_processor(*file);
        endFileProgress();
    }
    emit filesDone(m_quitRequested);

    m_view.setProgressVisible(false);
    if (m_cancelRequested) {
        m_view.showStatus(QString(), StatusTarget::ProgressText);
    }
    if (error != noErr) {
        const QString name = m_current ? CopyFileName(*m_current).value_or(QString()) : QString();
        m_view.showErrorWindow(
            QString::fromUtf16(batchTexts::errorWindowText).arg(name).arg(error));
    }
    m_view.setRunning(false);
    if (nonFileGiven) {
        m_desktop.stopAlert(QString::fromUtf16(batchTexts::notAFileMessage),
                            QString::fromUtf16(batchTexts::notAFileExplanation));
    }
    m_running = false;
    if (m_gate) {
        m_gate->leave();
    }

    if (!m_held.isEmpty() && !m_quitRequested) {
        // Files that arrived during the run: their run reports and quits in its turn.
        m_pending = std::exchange(m_held, {});
        scheduleBatchRun();
    } else if (m_preferences.GetQuitWhenDone()) {
        QTimer::singleShot(1000, this, &BatchRunner::farewellDue);
    } else {
        m_view.showStatus(QString::fromUtf16(batchTexts::helpText), StatusTarget::StatusText);
    }
    emit runEnded();
}

} // namespace tallyvox
