#include "shell/BatchRunner.h"

#include "prefs/PreferenceStore.h"
#include "shell/BatchView.h"
#include "shell/PlainFolder.h"
#include "shell/WorkGate.h"
#include "support/Desktop.h"

#include <cstdio>
#include <cstdlib>

namespace tallyvox {

namespace {

// A name that cannot be read ends the process on the spot, without saving anything:
// the run has lost track of its files and nothing it would write can be trusted.
[[noreturn]] void exitToShell()
{
    std::fflush(stdout);
    std::_Exit(EXIT_FAILURE);
}

} // namespace

BatchRunner::BatchRunner(BatchView& view, Desktop& desktop, const PreferenceStore& preferences,
                         FileProcessor processor, WorkGate* gate, QObject* parent)
    : QObject(parent), m_view(view), m_desktop(desktop), m_preferences(preferences),
      m_processor(std::move(processor)), m_gate(gate)
{
    m_startTimer.setSingleShot(true);
    m_startTimer.setInterval(1);
    connect(&m_startTimer, &QTimer::timeout, this, &BatchRunner::runBatch);
    if (m_gate) {
        connect(m_gate, &WorkGate::released, this, [this] {
            if (std::exchange(m_waitingForGate, false)) {
                scheduleBatchRun();
            }
        });
    }
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
        m_processor(*file);
    }
    emit filesDone(m_quitRequested);

    m_view.setProgressVisible(false);
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
