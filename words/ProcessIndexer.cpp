#include "words/ProcessIndexer.h"

#include "support/Desktop.h"
#include "support/FilePath.h"
#include "support/IndexerContract.h"
#include "words/WordTableReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QFutureWatcher>
#include <QProcess>
#include <QThread>
#include <QTimer>
#include <QtConcurrent/QtConcurrentRun>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <mutex>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tallyvox {

// Folders kept empty for the next runs. One run at a time writes in a folder, so whatever
// result is found there is that run's; making and removing a folder for every file cost a
// tenth of a batch's CPU on ext4. Shared with the runs, which may outlive the indexer.
class RunFolders {
public:
    explicit RunFolders(QString temporaryFolder) : m_temporaryFolder(std::move(temporaryFolder)) {}
    ~RunFolders()
    {
        const std::lock_guard lock(m_mutex);
        for (const QString& folder : m_free) {
            QDir(folder).removeRecursively();
        }
    }
    RunFolders(const RunFolders&) = delete;
    RunFolders& operator=(const RunFolders&) = delete;

    std::optional<QString> take()
    {
        {
            const std::lock_guard lock(m_mutex);
            if (!m_free.empty()) {
                QString folder = std::move(m_free.back());
                m_free.pop_back();
                return folder;
            }
        }
        if (m_temporaryFolder.isEmpty()) {
            return std::nullopt;
        }
        QByteArray pattern = encodePath(m_temporaryFolder + QStringLiteral("/run-XXXXXX"));
        if (::mkdtemp(pattern.data()) == nullptr) {
            return std::nullopt;
        }
        return decodePath(pattern);
    }

    /// Keeps folder for another run when nothing is left in it; removes it otherwise.
    void giveBack(const QString& folder)
    {
        constexpr std::size_t kept = 16;
        const QDir dir(folder);
        if (dir.isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System)) {
            const std::lock_guard lock(m_mutex);
            if (m_free.size() < kept) {
                m_free.push_back(folder);
                return;
            }
        }
        QDir(folder).removeRecursively();
    }

private:
    const QString m_temporaryFolder;
    std::mutex m_mutex;
    std::vector<QString> m_free;
};

namespace {

// Only the first lines of an indexer's complaints say anything; the rest is dropped.
constexpr qsizetype errorOutputLimit = qsizetype{64} * 1024;

// The indexer's progress lines are short; anything longer is not one of them.
constexpr qint64 progressLineLimit = 128;

// The reasons of the indexer's "PROGRAM: PATH: partial word table: REASON[; REASON...]"
// line, empty when it wrote none.
QString cutReasonsIn(const QByteArray& errors)
{
    static constexpr QByteArrayView marker = ": partial word table: ";
    for (const QByteArray& line : errors.split('\n')) {
        const qsizetype at = line.lastIndexOf(marker);
        if (at >= 0) {
            return QString::fromUtf8(line.mid(at + marker.size()).trimmed());
        }
    }
    return {};
}

// What the child hands to execve. Qt passes arguments and the environment as text, which
// cannot carry a file name that is not UTF-8, so the child execs the indexer itself with
// the bytes. All of it is made before the fork, where allocating is still safe.
struct ExecImage {
    QByteArray program;
    QByteArray argument;
    QByteArrayList options;
    QByteArrayList environment;
    std::vector<char*> argv;
    std::vector<char*> envp;
};

std::shared_ptr<ExecImage> execImage(const QString& program, const QString& posixPath,
                                     const QByteArrayList& options, const QByteArrayList& settings)
{
    auto image = std::make_shared<ExecImage>();
    image->program = encodePath(program);
    image->argument = encodePath(posixPath);
    image->options = options;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const QByteArrayView variable(*entry);
        const bool replaced = std::any_of(settings.begin(), settings.end(), [&](const auto& s) {
            return variable.startsWith(s.left(s.indexOf('=') + 1));
        });
        if (!replaced) {
            image->environment.append(*entry);
        }
    }
    image->environment.append(settings);
    image->argv = {image->program.data(), image->argument.data()};
    for (QByteArray& option : image->options) {
        image->argv.push_back(option.data());
    }
    image->argv.push_back(nullptr);
    for (QByteArray& entry : image->environment) {
        image->envp.push_back(entry.data());
    }
    image->envp.push_back(nullptr);
    return image;
}

// The result the run left, read away from the event loop (a large table takes a while),
// and removed; the folder goes back for another run.
std::optional<WordTable> readResult(const std::shared_ptr<RunFolders>& folders,
                                    const QString& runFolder)
{
    const QByteArray path =
        encodePath(runFolder + QLatin1Char('/') + QLatin1String(resultFileName));
    std::optional<WordTable> table;
    struct stat info {};
    if (::lstat(path.constData(), &info) == 0 && S_ISREG(info.st_mode)) {
        table = ReadWordTableFile(decodePath(path));
    }
    ::unlink(path.constData());
    folders->giveBack(runFolder);
    return table;
}

class ProcessRun final : public IndexerRun {
public:
    ProcessRun(Desktop& desktop, QString executableName, std::shared_ptr<RunFolders> folders,
               QString runFolder, std::chrono::milliseconds stallLimit)
        : m_desktop(desktop), m_executableName(std::move(executableName)),
          m_folders(std::move(folders)), m_runFolder(std::move(runFolder)), m_stallLimit(stallLimit)
    {
        m_stall.setSingleShot(true);
        connect(&m_stall, &QTimer::timeout, this, [this] { end(Why::Stalled); });
        connect(&m_process, &QProcess::finished, this, &ProcessRun::processFinished);
        connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                m_desktop.log(m_executableName + QStringLiteral(" could not be started: ") +
                              m_process.errorString());
                discard(IndexerEnding::Failed);
            }
        });
        connect(&m_process, &QProcess::readyReadStandardError, this, &ProcessRun::collectErrors);
        connect(&m_process, &QProcess::readyReadStandardOutput, this, &ProcessRun::readProgress);
    }

    ~ProcessRun() override
    {
        if (m_process.state() != QProcess::NotRunning) {
            endProcessGroup();
            m_process.waitForFinished();
        }
        if (!m_reading && !isFinished()) {
            QDir(m_runFolder).removeRecursively();
        }
    }
    ProcessRun(const ProcessRun&) = delete;
    ProcessRun& operator=(const ProcessRun&) = delete;

    void begin(const QString& program, const QString& posixPath, const QByteArrayList& options,
               const QByteArrayList& settings)
    {
        m_process.setProgram(program);
        QStringList arguments{posixPath};
        for (const QByteArray& option : options) {
            arguments.append(QString::fromLatin1(option));
        }
        m_process.setArguments(arguments);
        m_process.setStandardInputFile(QProcess::nullDevice());
        m_process.setProcessChannelMode(QProcess::SeparateChannels);
        // In the child, before exec: its own process group, and death with its parent. The
        // parent may already be gone by then; the indexer must not outlive it either way.
        // Then the exec with the path's own bytes; should it fail, Qt's own exec follows
        // and reports the failure to start.
        const pid_t parent = ::getpid();
        const std::shared_ptr<ExecImage> image = execImage(program, posixPath, options, settings);
        m_process.setChildProcessModifier([parent, image] {
            ::setpgid(0, 0);
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            if (::getppid() != parent) {
                ::raise(SIGKILL);
            }
            ::execve(image->program.constData(), image->argv.data(), image->envp.data());
        });
        m_process.start();
        m_stall.start(m_stallLimit);
    }

    void stop() override { end(Why::Stopped); }

private:
    enum class Why { Stopped, Stalled };

    // The indexer leads a process group of its own, so that ending it also ends any
    // helper it started.
    void endProcessGroup()
    {
        const auto pid = static_cast<pid_t>(m_process.processId());
        if (pid <= 0 || ::kill(-pid, SIGKILL) != 0) {
            m_process.kill();
        }
    }

    void end(Why why)
    {
        if (isFinished() || m_reading) {
            return;
        }
        m_stall.stop();
        if (why == Why::Stalled) {
            m_desktop.log(m_executableName +
                          QStringLiteral(" was ended: it read nothing further for %1 s")
                              .arg(std::chrono::ceil<std::chrono::seconds>(m_stallLimit).count()));
        }
        endProcessGroup();
        discard(why == Why::Stopped ? IndexerEnding::Stopped : IndexerEnding::Failed);
    }

    // Whatever a failed or ended run left is not looked at; its folder is not used again.
    void discard(IndexerEnding ending)
    {
        m_stall.stop();
        QDir(m_runFolder).removeRecursively();
        finish(ending);
    }

    void collectErrors()
    {
        const QByteArray more = m_process.readAllStandardError();
        m_errors.append(more.left(std::max<qsizetype>(0, errorOutputLimit - m_errors.size())));
    }

    // Passes on each "progress DONE TOTAL" line; other output, whole or in pieces, is
    // dropped. A position further on than the last one is progress, and the stall
    // watchdog starts again.
    void readProgress()
    {
        m_process.setReadChannel(QProcess::StandardOutput);
        while (m_process.canReadLine()) {
            const QByteArray line = m_process.readLine(progressLineLimit);
            const QList<QByteArray> fields = line.trimmed().split(' ');
            bool doneOk = false;
            bool totalOk = false;
            if (fields.size() == 3 && fields.at(0) == "progress") {
                const quint64 done = fields.at(1).toULongLong(&doneOk);
                const quint64 total = fields.at(2).toULongLong(&totalOk);
                if (doneOk && totalOk) {
                    if (done > m_lastDone && !isFinished()) {
                        m_lastDone = done;
                        m_stall.start(m_stallLimit);
                    }
                    emit progressed(done, total);
                }
            }
        }
        if (m_process.bytesAvailable() > progressLineLimit) {
            m_process.readAll();
        }
    }

    void processFinished(int exitCode, QProcess::ExitStatus status)
    {
        // The last lines may come with the end of the process.
        collectErrors();
        readProgress();
        if (isFinished()) {
            return;
        }
        m_stall.stop();
        for (const QByteArray& line : m_errors.split('\n')) {
            if (!line.trimmed().isEmpty()) {
                m_desktop.log(QString::fromUtf8(line));
            }
        }
        if (status == QProcess::CrashExit) {
            m_desktop.log(m_executableName +
                          QStringLiteral(" was ended by signal %1").arg(exitCode));
            discard(IndexerEnding::Failed);
            return;
        }
        if (exitCode != 0 && exitCode != partialTableStatus) {
            m_desktop.log(m_executableName +
                          QStringLiteral(" failed with exit status %1").arg(exitCode));
            discard(IndexerEnding::Failed);
            return;
        }
        const IndexerEnding ending =
            exitCode == partialTableStatus ? IndexerEnding::Partial : IndexerEnding::Complete;
        if (ending == IndexerEnding::Partial) {
            setCutReasons(cutReasonsIn(m_errors));
        }
        m_reading = true;
        auto* watcher = new QFutureWatcher<std::optional<WordTable>>(this);
        connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, ending] {
            std::optional<WordTable> table = watcher->future().takeResult();
            watcher->deleteLater();
            m_reading = false;
            finish(table ? ending : IndexerEnding::Failed, std::move(table));
        });
        watcher->setFuture(QtConcurrent::run(readResult, m_folders, m_runFolder));
    }

    Desktop& m_desktop;
    QString m_executableName;
    std::shared_ptr<RunFolders> m_folders;
    QString m_runFolder;
    std::chrono::milliseconds m_stallLimit;
    QProcess m_process;
    QTimer m_stall;
    QByteArray m_errors;
    quint64 m_lastDone = 0;
    // The result is being read on another thread, which also hands the folder back.
    bool m_reading = false;
};

// A run that could not even begin; it ends as a failure from the event loop.
class FailedRun final : public IndexerRun {
public:
    FailedRun() { finish(IndexerEnding::Failed); }
    void stop() override {}
};

} // namespace

ProcessIndexer::ProcessIndexer(Desktop& desktop, Setup setup)
    : m_desktop(desktop), m_setup(std::move(setup)),
      m_folders(std::make_shared<RunFolders>(m_setup.temporaryFolder))
{}

ProcessIndexer::~ProcessIndexer() = default;

std::unique_ptr<IndexerRun> ProcessIndexer::start(const QString& posixPath,
                                                  const QString& executableName, int ngramLength)
{
    const std::optional<QString> runFolder = m_folders->take();
    if (!runFolder) {
        m_desktop.log(QStringLiteral("No private temporary folder for ") + executableName +
                      QStringLiteral(" in \"") + m_setup.temporaryFolder + QLatin1Char('"'));
        return std::make_unique<FailedRun>();
    }
    QByteArrayList settings{QByteArrayLiteral("TMPDIR=") + encodePath(*runFolder)};
    if (m_threadsPerRun > 0) {
        settings.append(QByteArrayLiteral("TALLYVOX_INDEXER_THREADS=") +
                        QByteArray::number(m_threadsPerRun));
    }
    auto run = std::make_unique<ProcessRun>(m_desktop, executableName, m_folders, *runFolder,
                                            m_setup.stallLimit);
    // Single words keep the command line the indexer always had: the path alone.
    QByteArrayList options;
    if (ngramLength > 1) {
        options = {QByteArray(ngramLengthOption), QByteArray::number(ngramLength)};
    }
    run->begin(m_setup.directory + QLatin1Char('/') + executableName, posixPath, options, settings);
    return run;
}

void ProcessIndexer::setConcurrentRuns(int runs)
{
    m_threadsPerRun = runs > 1 ? std::max(1, QThread::idealThreadCount() / runs) : 0;
}

QString defaultIndexerDirectory()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/" TALLYVOX_LIBEXEC_RELATIVE);
}

} // namespace tallyvox
