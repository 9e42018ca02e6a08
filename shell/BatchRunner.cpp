#include "shell/BatchRunner.h"

#include "prefs/PreferenceStore.h"
#include "services/ProcessFile.h"
#include "shell/BatchView.h"
#include "shell/JobQueue.h"
#include "shell/PlainFolder.h"
#include "support/Desktop.h"
#include "words/FileJob.h"
#include "words/Indexer.h"

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

BatchRunner::BatchRunner(BatchView& view, const WordContext& context, JobQueue& queue,
                         QObject* parent)
    : QObject(parent), m_view(view), m_context(context), m_queue(queue)
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
}

BatchRunner::~BatchRunner() = default;

void BatchRunner::setConcurrency(int files)
{
    m_concurrency = std::max(1, files);
}

void BatchRunner::openDocuments(const QStringList& paths)
{
    m_context.desktop.raiseApplication();
    queueDocuments(paths);
}

void BatchRunner::queueDocuments(const QStringList& paths)
{
    m_pending = paths;
    scheduleBatchRun();
}

void BatchRunner::scheduleBatchRun()
{
    m_startTimer.start();
}

void BatchRunner::runBatch()
{
    // The run reads its own copy: a later arrival replaces the pending list, not the run's.
    m_queue.add(
        [this, items = m_pending](JobQueue::Done done) { beginRun(items, std::move(done)); });
}

void BatchRunner::requestCancel()
{
    m_cancelRequested = true;
    // The run still finishes the files in hand; the user sees at once that the click counted.
    if (m_running) {
        showFileProgress();
    }
}

void BatchRunner::requestQuit()
{
    m_quitRequested = true;
    for (Item& item : m_inFlight) {
        if (item.job) {
            item.job->stop();
        }
    }
}

void BatchRunner::beginRun(const QStringList& items, std::function<void()> done)
{
    m_done = std::move(done);
    m_items = items;
    m_running = true;
    m_cancelRequested = false;
    m_view.setRunning(true);
    m_listRun.begin(m_context.preferences.readBool(prefs::CombineFiles));

    const qsizetype count = m_items.size();
    // Computed in 16 bits as the progress control takes it; an empty list gives -1.
    m_view.setProgressMaximum(static_cast<qint16>(count - 1));
    m_view.setProgressMinimum(0);
    m_view.setProgressVisible(true);
    m_progress = 0;
    m_nextItem = 0;
    m_error = noErr;
    m_nonFileGiven = false;
    m_troubled.clear();
    m_failedName.clear();
    m_context.indexer.setConcurrentRuns(
        static_cast<int>(std::min<qsizetype>(m_concurrency, std::max<qsizetype>(count, 1))));
    pump();
}

// Begins files while there is room, and ends the run when nothing is left in hand. Every
// piece of state is updated before anything is called that may run the event loop (a
// stop-list alert), so a pump from within that loop finds it consistent.
void BatchRunner::pump()
{
    while (m_running && std::ssize(m_inFlight) < m_concurrency && m_nextItem < m_items.size() &&
           !m_cancelRequested && !m_quitRequested) {
        beginItem(m_nextItem++);
    }
    if (m_running && m_inFlight.empty() &&
        (m_nextItem >= m_items.size() || m_cancelRequested || m_quitRequested)) {
        endRun();
    }
}

void BatchRunner::beginItem(qsizetype index)
{
    // The bar's maximum is count - 1 yet the first item already shows 1, so it is
    // full from the second-to-last item on. Intended.
    ++m_progress;
    m_view.setProgressValue(m_progress);

    std::optional<FileRef> file = FileRef::fromPath(m_items.at(index));
    if (!file) {
        m_error = fnfErr;
        m_failedName = m_items.at(index).section(u'/', -1);
        return;
    }
    m_error = noErr;
    m_current = file;
    if (IsPlainFolder(*file)) {
        m_nonFileGiven = true;
        return;
    }
    const std::optional<QString> name = CopyFileName(*file);
    if (!name) {
        exitToShell();
    }
    std::unique_ptr<FileJob> job =
        ProcessFile(m_context, *file, ProcessMode::ExtractWords, &m_listRun);
    if (!job) {
        return;
    }
    FileJob* started = job.get();
    m_inFlight.push_back({*name, std::move(job), std::nullopt});
    connect(started, &FileJob::progressed, this, [this, started](quint64 done, quint64 total) {
        const auto item = std::find_if(m_inFlight.begin(), m_inFlight.end(),
                                       [started](const Item& i) { return i.job.get() == started; });
        if (item == m_inFlight.end()) {
            return;
        }
        item->read = {done, total};
        if (item == m_inFlight.begin() && m_fileSlow) {
            showFileProgress();
        }
    });
    connect(started, &FileJob::ready, this, &BatchRunner::commitReady);
    if (m_inFlight.size() == 1) {
        frontChanged();
    }
    started->start();
}

// Lists reach the user in the order their files were given: a file done early waits for
// the ones before it.
void BatchRunner::commitReady()
{
    while (!m_inFlight.empty() && m_inFlight.front().job->isReady()) {
        Item item = std::move(m_inFlight.front());
        m_inFlight.pop_front();
        if (item.job->commit() != noErr) {
            m_listFailed = true;
        }
        if (item.job->failed()) {
            m_listFailed = true;
        }
        if (const ListProblem problem = item.job->problem(); problem.isProblem()) {
            m_wordsLost = m_wordsLost || problem.lostWords();
            m_troubled.append({item.name, problem});
        }
        // Its ready() may be the signal being delivered now.
        item.job.release()->deleteLater();
        if (!m_inFlight.empty()) {
            frontChanged();
        }
    }
    pump();
}

void BatchRunner::endRun()
{
    m_running = false;
    m_progressDelay.stop();
    if (m_listRun.finish(m_context, m_quitRequested) != noErr) {
        m_listFailed = true;
    }

    m_view.setProgressVisible(false);
    if (m_cancelRequested || std::exchange(m_progressShown, false)) {
        m_view.showStatus(QString(), StatusTarget::ProgressText);
    }
    if (m_error != noErr) {
        // The error window names the last item read in this process; before any was, the
        // one that failed.
        const QString name =
            m_current ? CopyFileName(*m_current).value_or(QString()) : m_failedName;
        m_view.showErrorWindow(
            translated(batchTexts::context, batchTexts::errorWindowText).arg(name).arg(m_error));
    }
    m_view.setRunning(false);
    if (m_nonFileGiven) {
        m_context.desktop.stopAlert(
            translated(batchTexts::context, batchTexts::notAFileMessage),
            translated(batchTexts::context, batchTexts::notAFileExplanation));
    }
    // After the error window and the folder alert: every list that came out empty or cut
    // short is said, once for the run, with why.
    reportTroubledLists();

    if (m_context.preferences.GetQuitWhenDone()) {
        // Work queued behind this run quits in its turn.
        if (m_queue.waiting() == 0 && !m_quitRequested) {
            QTimer::singleShot(1000, this, &BatchRunner::farewellDue);
        }
    } else {
        m_view.showStatus(translated(batchTexts::context, batchTexts::helpText),
                          StatusTarget::StatusText);
    }
    if (std::function<void()> done = std::exchange(m_done, {})) {
        done();
    }
    emit runEnded();
}

namespace {

QString reasonText(const ListProblem& problem)
{
    using Kind = ListProblem::Kind;
    switch (problem.kind) {
    case Kind::Empty:
        return translated(batchTexts::context, batchTexts::emptyFile);
    case Kind::NoWords:
        return translated(batchTexts::context, batchTexts::noWords);
    case Kind::NoPermission:
        return translated(batchTexts::context, batchTexts::noPermission);
    case Kind::PasswordProtected:
        return translated(batchTexts::context, batchTexts::passwordProtected);
    case Kind::NotADocument:
        return translated(batchTexts::context, batchTexts::notADocument);
    case Kind::PathTooLong:
        return translated(batchTexts::context, batchTexts::pathTooLong);
    case Kind::Cut:
        return problem.cutReasons.isEmpty()
                   ? translated(batchTexts::context, batchTexts::cutAtLimit)
                   : translated(batchTexts::context, batchTexts::cutAtLimits)
                         .arg(problem.cutReasons);
    case Kind::NotRead:
    case Kind::None:
        break;
    }
    return translated(batchTexts::context, batchTexts::notRead);
}

} // namespace

void BatchRunner::reportTroubledLists()
{
    if (m_troubled.isEmpty()) {
        return;
    }
    if (m_troubled.size() == 1) {
        const auto& [name, problem] = m_troubled.first();
        const char16_t* text =
            problem.kind == ListProblem::Kind::Cut ? batchTexts::cutList : batchTexts::emptyList;
        m_context.desktop.alert(
            translated(batchTexts::context, text).arg(name, reasonText(problem)));
        return;
    }
    QStringList items;
    for (const auto& [name, problem] : std::as_const(m_troubled)) {
        items.append(translated(batchTexts::context, batchTexts::troubledList)
                         .arg(name, reasonText(problem)));
    }
    m_context.desktop.alert(translated(batchTexts::context, batchTexts::troubledLists)
                                .arg(items.join(QStringLiteral("; "))));
}

// The window shows the file at the head of the run: the one whose list comes next.
void BatchRunner::frontChanged()
{
    const Item& front = m_inFlight.front();
    m_view.showStatus(translated(batchTexts::context, batchTexts::fileStatus).arg(front.name),
                      StatusTarget::StatusText);
    m_fileSlow = false;
    m_progressDelay.start();
    if (std::exchange(m_progressShown, false) && !m_cancelRequested) {
        m_view.showStatus(QString(), StatusTarget::ProgressText);
    }
}

void BatchRunner::showFileProgress()
{
    QString text;
    if (!m_inFlight.empty() && m_fileSlow) {
        const Item& front = m_inFlight.front();
        if (front.read && front.read->second > 0) {
            const quint64 percent =
                std::min<quint64>(100, front.read->first * 100 / front.read->second);
            text = translated(batchTexts::context, batchTexts::filePercent)
                       .arg(front.name, QString::number(percent));
        } else {
            text = translated(batchTexts::context, batchTexts::fileReading).arg(front.name);
        }
    }
    if (m_cancelRequested) {
        text = text.isEmpty() ? translated(batchTexts::context, batchTexts::stopping)
                              : translated(batchTexts::context, batchTexts::fileStopping).arg(text);
    }
    m_progressShown = true;
    m_view.showStatus(text, StatusTarget::ProgressText);
}

} // namespace tallyvox
