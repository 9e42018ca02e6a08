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
#include <fcntl.h>
#include <mutex>
#include <sys/mman.h>
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

// The indexer's lines are short; a longer piece with no line end is not one of them.
constexpr qsizetype lineLimit = qsizetype{64} * 1024;

// Idle serving indexers kept for later runs, of every kind together.
constexpr std::size_t idleServersKept = 4;

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

// What the child hands to execve. Qt passes the environment as text, which cannot carry a
// folder name that is not UTF-8, so the child execs the indexer itself with the bytes. All
// of it is made before the fork, where allocating is still safe.
struct ExecImage {
    QByteArray program;
    QByteArrayList arguments;
    QByteArrayList environment;
    std::vector<char*> argv;
    std::vector<char*> envp;
};

std::shared_ptr<ExecImage> execImage(const QString& program, const QByteArrayList& arguments,
                                     const QByteArrayList& settings)
{
    auto image = std::make_shared<ExecImage>();
    image->program = encodePath(program);
    image->arguments = arguments;
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
    image->argv = {image->program.data()};
    for (QByteArray& argument : image->arguments) {
        image->argv.push_back(argument.data());
    }
    image->argv.push_back(nullptr);
    for (QByteArray& entry : image->environment) {
        image->envp.push_back(entry.data());
    }
    image->envp.push_back(nullptr);
    return image;
}

// A serving indexer (SearchKitIndexer --serve): one process started once, which indexes
// each path it is sent in a child of its own. The children write their tables into a
// memory file the application holds too, so a file costs no process start from this
// large process, no loading, and nothing made or removed on disk. It works in a private
// folder of its own, one file at a time.
class Server {
public:
    Server(QString kind, std::shared_ptr<RunFolders> folders, QString folder, int descriptor)
        : key(std::move(kind)), table(descriptor), m_folders(std::move(folders)),
          m_folder(std::move(folder))
    {}

    // In the child, before exec: its own process group, and death with its parent. The
    // parent may already be gone by then; the indexer must not outlive it either way. The
    // table's memory file stays open across the exec. Should the exec fail, Qt's own exec
    // follows and reports the failure to start.
    void launch(const QString& program, const QByteArrayList& arguments,
                const QByteArrayList& settings)
    {
        launched = true;
        process.setProgram(program);
        QStringList texts;
        for (const QByteArray& argument : arguments) {
            texts.append(QString::fromLatin1(argument));
        }
        process.setArguments(texts);
        process.setProcessChannelMode(QProcess::MergedChannels);
        const pid_t parent = ::getpid();
        const int kept = table;
        const std::shared_ptr<ExecImage> image = execImage(program, arguments, settings);
        process.setChildProcessModifier([parent, kept, image] {
            ::setpgid(0, 0);
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            if (::getppid() != parent) {
                ::raise(SIGKILL);
            }
            ::fcntl(kept, F_SETFD, 0);
            ::execve(image->program.constData(), image->argv.data(), image->envp.data());
        });
        process.start();
    }
    ~Server()
    {
        if (process.state() != QProcess::NotRunning) {
            endProcessGroup();
            process.waitForFinished();
        }
        ::close(table);
        if (m_clean) {
            m_folders->giveBack(m_folder);
        } else {
            QDir(m_folder).removeRecursively();
        }
    }
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // The server leads a process group of its own, so that ending it also ends the child
    // indexing and anything that child started.
    void endProcessGroup()
    {
        const auto pid = static_cast<pid_t>(process.processId());
        if (pid <= 0 || ::kill(-pid, SIGKILL) != 0) {
            process.kill();
        }
    }

    // Whatever a failed or ended file left is not looked at; the folder is not used again.
    void spoil() { m_clean = false; }

    // Another file may follow only when this one left nothing behind.
    bool reusable() const
    {
        return m_clean && process.state() == QProcess::Running &&
               QDir(m_folder).isEmpty(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden |
                                      QDir::System);
    }

    const QString key;
    const int table;
    QProcess process;
    QByteArray pending;
    bool launched = false;

private:
    std::shared_ptr<RunFolders> m_folders;
    QString m_folder;
    bool m_clean = true;
};

} // namespace

// Idle servers, shared with the runs, which may outlive the indexer.
class ServerPool {
public:
    std::unique_ptr<Server> take(const QString& key)
    {
        const auto found = std::find_if(m_idle.begin(), m_idle.end(),
                                        [&](const auto& server) { return server->key == key; });
        if (found == m_idle.end()) {
            return nullptr;
        }
        std::unique_ptr<Server> server = std::move(*found);
        m_idle.erase(found);
        return server;
    }

    void giveBack(std::unique_ptr<Server> server)
    {
        if (!m_closed && server->reusable()) {
            server->pending.clear();
            m_idle.push_back(std::move(server));
            if (m_idle.size() > idleServersKept) {
                m_idle.erase(m_idle.begin());
            }
        }
    }

    void close()
    {
        m_closed = true;
        m_idle.clear();
    }

private:
    std::vector<std::unique_ptr<Server>> m_idle;
    bool m_closed = false;
};

namespace {

class ProcessRun final : public IndexerRun {
public:
    ProcessRun(Desktop& desktop, QString executableName, std::shared_ptr<ServerPool> pool,
               std::unique_ptr<Server> server, std::chrono::milliseconds stallLimit)
        : m_desktop(desktop), m_executableName(std::move(executableName)), m_pool(std::move(pool)),
          m_server(std::move(server)), m_stallLimit(stallLimit)
    {
        m_stall.setSingleShot(true);
        connect(&m_stall, &QTimer::timeout, this, [this] { end(Why::Stalled); });
        QProcess& process = m_server->process;
        connect(&process, &QProcess::finished, this, &ProcessRun::serverEnded);
        connect(&process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart && !isFinished()) {
                m_desktop.log(m_executableName + QStringLiteral(" could not be started: ") +
                              m_server->process.errorString());
                discard(IndexerEnding::Failed);
            }
        });
        connect(&process, &QProcess::readyReadStandardOutput, this, &ProcessRun::readOutput);
    }

    ~ProcessRun() override
    {
        // The server ends with the run; what it says while it ends is nobody's.
        if (m_server) {
            m_server->process.disconnect(this);
        }
    }
    ProcessRun(const ProcessRun&) = delete;
    ProcessRun& operator=(const ProcessRun&) = delete;

    /// Sends posixPath to the server, which is started first when it is new.
    void begin(const QString& posixPath, const QString& program, const QByteArrayList& arguments,
               const QByteArrayList& settings)
    {
        if (!m_server->launched) {
            m_server->launch(program, arguments, settings);
        }
        if (isFinished()) {
            return;
        }
        QByteArray request = encodePath(posixPath);
        request.append('\0');
        m_server->process.write(request);
        m_stall.start(m_stallLimit);
    }

    void stop() override { end(Why::Stopped); }

private:
    enum class Why { Stopped, Stalled };

    void end(Why why)
    {
        if (isFinished() || m_reading) {
            return;
        }
        if (why == Why::Stalled) {
            m_desktop.log(m_executableName +
                          QStringLiteral(" was ended: it read nothing further for %1 s")
                              .arg(std::chrono::ceil<std::chrono::seconds>(m_stallLimit).count()));
        }
        discard(why == Why::Stopped ? IndexerEnding::Stopped : IndexerEnding::Failed);
    }

    // The server goes with whatever the file left in its folder.
    void discard(IndexerEnding ending)
    {
        m_stall.stop();
        m_server->spoil();
        m_server->endProcessGroup();
        finish(ending);
    }

    // Progress lines, complaints and the line that ends the file, in the order the server
    // and its child wrote them (one stream: standard error is merged into it).
    void readOutput()
    {
        if (isFinished() || m_reading) {
            return;
        }
        QByteArray& pending = m_server->pending;
        pending.append(m_server->process.readAll());
        const QByteArrayView marker(servedFileMarker, sizeof servedFileMarker - 1);
        qsizetype start = 0;
        for (qsizetype end = pending.indexOf('\n'); end >= 0 && !m_reading && !isFinished();
             end = pending.indexOf('\n', start)) {
            const QByteArrayView line = QByteArrayView(pending).sliced(start, end - start);
            start = end + 1;
            const qsizetype at = line.indexOf(marker);
            if (at >= 0) {
                collectError(line.first(at));
                fileEnded(line.sliced(at + marker.size()));
            } else if (line.startsWith("progress ")) {
                readProgress(line);
            } else if (line.startsWith(typeRunsLine)) {
                readTypeRuns(line);
            } else {
                collectError(line);
            }
        }
        pending.remove(0, start);
        if (pending.size() > lineLimit) {
            pending.clear();
        }
    }

    void collectError(QByteArrayView line)
    {
        if (!line.trimmed().isEmpty() && m_errors.size() < errorOutputLimit) {
            m_errors.append(line.first(std::min(line.size(), errorOutputLimit - m_errors.size())));
            m_errors.append('\n');
        }
    }

    // A "progress DONE TOTAL" line; a position further on than the last one is progress,
    // and the stall watchdog starts again.
    void readProgress(QByteArrayView line)
    {
        const QList<QByteArray> fields = line.toByteArray().trimmed().split(' ');
        bool doneOk = false;
        bool totalOk = false;
        if (fields.size() == 3) {
            const quint64 done = fields.at(1).toULongLong(&doneOk);
            const quint64 total = fields.at(2).toULongLong(&totalOk);
            if (doneOk && totalOk) {
                if (done > m_lastDone) {
                    m_lastDone = done;
                    m_stall.start(m_stallLimit);
                }
                emit progressed(done, total);
            }
        }
    }

    // A "sttr TYPES RUNS" line, kept for the table that follows.
    void readTypeRuns(QByteArrayView line)
    {
        const QList<QByteArray> fields = line.toByteArray().trimmed().split(' ');
        bool typesOk = false;
        bool runsOk = false;
        if (fields.size() == 3) {
            const qint64 types = fields.at(1).toLongLong(&typesOk);
            const qint64 runs = fields.at(2).toLongLong(&runsOk);
            if (typesOk && runsOk && types >= 0 && runs >= 0) {
                setTypeRuns({types, runs});
                return;
            }
        }
        collectError(line);
    }

    void logErrors()
    {
        for (const QByteArray& line : m_errors.split('\n')) {
            if (!line.trimmed().isEmpty()) {
                m_desktop.log(QString::fromUtf8(line));
            }
        }
    }

    // "exit STATUS" or "signal NUMBER": how the child that indexed the file ended.
    void fileEnded(QByteArrayView how)
    {
        m_stall.stop();
        logErrors();
        const QList<QByteArray> fields = how.toByteArray().trimmed().split(' ');
        bool ok = fields.size() == 2;
        const int number = ok ? fields.at(1).toInt(&ok) : 0;
        if (!ok || fields.at(0) != "exit") {
            m_desktop.log(m_executableName +
                          QStringLiteral(" was ended by signal %1").arg(ok ? number : 0));
            discard(IndexerEnding::Failed);
            return;
        }
        if (number != 0 && number != partialTableStatus) {
            m_desktop.log(m_executableName +
                          QStringLiteral(" failed with exit status %1").arg(number));
            discard(IndexerEnding::Failed);
            return;
        }
        const IndexerEnding ending =
            number == partialTableStatus ? IndexerEnding::Partial : IndexerEnding::Complete;
        if (ending == IndexerEnding::Partial) {
            setCutReasons(cutReasonsIn(m_errors));
        }
        // Read away from the event loop: a large table takes a while. The server waits for
        // its next file meanwhile, so nothing writes the table under the reader.
        m_reading = true;
        auto* watcher = new QFutureWatcher<std::optional<WordTable>>(this);
        connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, ending] {
            std::optional<WordTable> table = watcher->future().takeResult();
            watcher->deleteLater();
            m_reading = false;
            m_server->process.disconnect(this);
            m_pool->giveBack(std::move(m_server));
            finish(table ? ending : IndexerEnding::Failed, std::move(table));
        });
        const int table = m_server->table;
        // Emptied once read: a large table would otherwise hold its memory while the
        // server waits.
        watcher->setFuture(QtConcurrent::run([table] {
            std::optional<WordTable> read = ReadWordTableDescriptor(table);
            [[maybe_unused]] const int emptied = ::ftruncate(table, 0);
            return read;
        }));
    }

    // The server itself ended while it had this file.
    void serverEnded(int exitCode, QProcess::ExitStatus status)
    {
        readOutput();
        if (isFinished() || m_reading) {
            return;
        }
        logErrors();
        if (status == QProcess::CrashExit) {
            m_desktop.log(m_executableName +
                          QStringLiteral(" was ended by signal %1").arg(exitCode));
        } else {
            m_desktop.log(m_executableName +
                          QStringLiteral(" failed with exit status %1").arg(exitCode));
        }
        discard(IndexerEnding::Failed);
    }

    Desktop& m_desktop;
    QString m_executableName;
    std::shared_ptr<ServerPool> m_pool;
    std::unique_ptr<Server> m_server;
    std::chrono::milliseconds m_stallLimit;
    QTimer m_stall;
    QByteArray m_errors;
    quint64 m_lastDone = 0;
    // The table is being read on another thread.
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
      m_folders(std::make_shared<RunFolders>(m_setup.temporaryFolder)),
      m_servers(std::make_shared<ServerPool>())
{}

ProcessIndexer::~ProcessIndexer()
{
    m_servers->close();
}

std::unique_ptr<IndexerRun> ProcessIndexer::start(const QString& posixPath,
                                                  const QString& executableName, int ngramLength,
                                                  bool typeRuns)
{
    // Servers differ by what each of their files is given.
    const QString key = executableName + QLatin1Char(' ') + QString::number(ngramLength) +
                        QLatin1Char(' ') + QString::number(m_threadsPerRun) +
                        (typeRuns ? QStringLiteral(" sttr") : QString());
    std::unique_ptr<Server> server = m_servers->take(key);
    QByteArrayList arguments{QByteArray(serveOption)};
    if (ngramLength > 1) {
        arguments += {QByteArray(ngramLengthOption), QByteArray::number(ngramLength)};
    }
    if (typeRuns) {
        arguments += QByteArray(typeRunsOption);
    }
    QByteArrayList settings;
    if (!server) {
        const std::optional<QString> runFolder = m_folders->take();
        if (!runFolder) {
            m_desktop.log(QStringLiteral("No private temporary folder for ") + executableName +
                          QStringLiteral(" in \"") + m_setup.temporaryFolder + QLatin1Char('"'));
            return std::make_unique<FailedRun>();
        }
        const int table = ::memfd_create("tallyvox-table", MFD_CLOEXEC);
        if (table < 0) {
            m_desktop.log(QStringLiteral("No memory file for ") + executableName);
            m_folders->giveBack(*runFolder);
            return std::make_unique<FailedRun>();
        }
        settings = {QByteArrayLiteral("TMPDIR=") + encodePath(*runFolder),
                    QByteArray(resultDescriptorVariable) + '=' + QByteArray::number(table)};
        if (m_threadsPerRun > 0) {
            settings.append(QByteArrayLiteral("TALLYVOX_INDEXER_THREADS=") +
                            QByteArray::number(m_threadsPerRun));
        }
        server = std::make_unique<Server>(key, m_folders, *runFolder, table);
    }
    auto run = std::make_unique<ProcessRun>(m_desktop, executableName, m_servers, std::move(server),
                                            m_setup.stallLimit);
    run->begin(posixPath, m_setup.directory + QLatin1Char('/') + executableName, arguments,
               settings);
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
