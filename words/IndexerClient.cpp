#include "words/IndexerClient.h"
#include "support/FilePath.h"

#include "support/Desktop.h"
#include "support/IndexerProgress.h"
#include "support/IndexerStop.h"
#include "words/WordTableReader.h"

#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace tallyvox {

namespace {

using namespace std::chrono_literals;

// The indexer takes the path as it is handed over; the deliberately small buffer
// keeps the longest path it ever sees at 254 bytes.
constexpr int indexerPathBufferSize = 255;

// The table was written, but a limit cut the document; one stderr line says which.
constexpr int partialTableStatus = 3;

// Only the first lines of an indexer's complaints say anything; the rest is dropped.
constexpr qsizetype errorOutputLimit = qsizetype{64} * 1024;

// Each run may take one second longer per this many bytes of input.
constexpr qint64 bytesPerExtraSecond = qint64{10} * 1024 * 1024;

// The indexer's progress lines are short; anything longer is not one of them.
constexpr qint64 progressLineLimit = 128;

// After SIGKILL the child is gone within moments; this only bounds a wait that cannot hang.
constexpr int reapMilliseconds = 5000;

enum class Ending { Finished, FailedToStart, TimedOut, Stopped };

// What kind of special file path names, or nothing for a file or folder to read. Reading
// a named pipe waits for a writer that may never come, and a device never ends.
const char* specialFileKind(const QByteArray& path)
{
    struct stat info {};
    if (::stat(path.constData(), &info) != 0) {
        return nullptr;
    }
    if (S_ISFIFO(info.st_mode)) {
        return "a named pipe";
    }
    if (S_ISCHR(info.st_mode) || S_ISBLK(info.st_mode)) {
        return "a device";
    }
    if (S_ISSOCK(info.st_mode)) {
        return "a socket";
    }
    return nullptr;
}

std::chrono::milliseconds timeLimit(const WordContext& context, const QString& path)
{
    struct stat info {};
    const qint64 size = ::stat(encodePath(path).constData(), &info) == 0 ? qint64{info.st_size} : 0;
    return context.indexerTimeBase + std::chrono::seconds(size / bytesPerExtraSecond);
}

// A folder only this run writes to, so whatever result is found there is this run's.
std::optional<QString> makeRunFolder(const QString& temporaryFolder)
{
    if (temporaryFolder.isEmpty()) {
        return std::nullopt;
    }
    QByteArray pattern = encodePath(temporaryFolder + QStringLiteral("/run-XXXXXX"));
    if (::mkdtemp(pattern.data()) == nullptr) {
        return std::nullopt;
    }
    return decodePath(pattern);
}

// The indexer leads a process group of its own, so that ending it also ends any helper
// it started.
void endProcessGroup(QProcess& process)
{
    const auto pid = static_cast<pid_t>(process.processId());
    if (pid <= 0 || ::kill(-pid, SIGKILL) != 0) {
        process.kill();
    }
}

void collectErrors(QProcess& process, QByteArray& errors)
{
    const QByteArray more = process.readAllStandardError();
    errors.append(more.left(std::max<qsizetype>(0, errorOutputLimit - errors.size())));
}

// What the child hands to execve. Qt passes arguments and the environment as text, which
// cannot carry a file name that is not UTF-8, so the child execs the indexer itself with
// the bytes. All of it is made before the fork, where allocating is still safe.
struct ExecImage {
    QByteArray program;
    QByteArray argument;
    QByteArrayList environment;
    std::vector<char*> argv;
    std::vector<char*> envp;
};

std::shared_ptr<ExecImage> execImage(const QString& program, const QString& posixPath,
                                     const QString& runFolder)
{
    auto image = std::make_shared<ExecImage>();
    image->program = encodePath(program);
    image->argument = encodePath(posixPath);
    const QByteArrayView tmpdir("TMPDIR=");
    for (char** entry = environ; *entry != nullptr; ++entry) {
        if (!QByteArrayView(*entry).startsWith(tmpdir)) {
            image->environment.append(*entry);
        }
    }
    image->environment.append(tmpdir.toByteArray() + encodePath(runFolder));
    image->argv = {image->program.data(), image->argument.data(), nullptr};
    for (QByteArray& entry : image->environment) {
        image->envp.push_back(entry.data());
    }
    image->envp.push_back(nullptr);
    return image;
}

void configure(QProcess& process, const WordContext& context, const QString& posixPath,
               const QString& executableName, const QString& runFolder)
{
    const QString program = context.indexerDirectory + QLatin1Char('/') + executableName;
    process.setProgram(program);
    process.setArguments({posixPath});
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), runFolder);
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    // Standard output carries the indexer's progress lines, read only where someone shows them.
    if (!context.progress) {
        process.setStandardOutputFile(QProcess::nullDevice());
    }
    process.setProcessChannelMode(QProcess::SeparateChannels);
    // In the child, before exec: its own process group, and death with its parent. The
    // parent may already be gone by then; the indexer must not outlive it either way.
    // Then the exec with the path's own bytes; should it fail, Qt's own exec follows and
    // reports the failure to start.
    const pid_t parent = ::getpid();
    const std::shared_ptr<ExecImage> image = execImage(program, posixPath, runFolder);
    process.setChildProcessModifier([parent, image] {
        ::setpgid(0, 0);
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent) {
            ::raise(SIGKILL);
        }
        ::execve(image->program.constData(), image->argv.data(), image->envp.data());
    });
}

// Passes on each "progress DONE TOTAL" line; other output, whole or in pieces, is dropped.
void readProgress(QProcess& process, IndexerProgress& progress)
{
    process.setReadChannel(QProcess::StandardOutput);
    while (process.canReadLine()) {
        const QByteArray line = process.readLine(progressLineLimit);
        const QList<QByteArray> fields = line.trimmed().split(' ');
        bool doneOk = false;
        bool totalOk = false;
        if (fields.size() == 3 && fields.at(0) == "progress") {
            const quint64 done = fields.at(1).toULongLong(&doneOk);
            const quint64 total = fields.at(2).toULongLong(&totalOk);
            if (doneOk && totalOk) {
                progress.report(done, total);
            }
        }
    }
    if (process.bytesAvailable() > progressLineLimit) {
        process.readAll();
    }
}

// A nested loop rather than a blocking wait, so that stop and quit commands still arrive
// while a long document is indexed.
Ending runToEnd(QProcess& process, std::chrono::milliseconds limit, const WordContext& context,
                QByteArray& errors)
{
    QEventLoop loop;
    Ending ending = Ending::Finished;
    const auto end = [&](Ending why) {
        ending = why;
        endProcessGroup(process);
        loop.quit();
    };
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, [&](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            ending = Ending::FailedToStart;
            loop.quit();
        }
    });
    QObject::connect(&process, &QProcess::readyReadStandardError, &loop,
                     [&] { collectErrors(process, errors); });
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, [&] { end(Ending::TimedOut); });
    if (context.stop) {
        QObject::connect(context.stop, &IndexerStop::stopped, &loop, [&] { end(Ending::Stopped); });
    }
    if (context.progress) {
        QObject::connect(&process, &QProcess::readyReadStandardOutput, &loop,
                         [&] { readProgress(process, *context.progress); });
    }

    process.start();
    if (ending != Ending::FailedToStart && process.state() != QProcess::NotRunning) {
        timer.start(limit);
        loop.exec();
    }
    // The loop also ends when the whole application quits.
    if (process.state() != QProcess::NotRunning) {
        endProcessGroup(process);
        process.waitForFinished(reapMilliseconds);
        if (ending == Ending::Finished) {
            ending = Ending::Stopped;
        }
    }
    collectErrors(process, errors);
    // The last lines may come with the end of the process, after the loop has stopped.
    if (context.progress) {
        readProgress(process, *context.progress);
    }
    return ending;
}

// The indexer's own lines first, then what became of it when it did not finish cleanly.
void logRun(Desktop& desktop, const QProcess& process, Ending ending, const QByteArray& errors,
            const QString& executableName, std::chrono::milliseconds limit)
{
    for (const QByteArray& line : errors.split('\n')) {
        if (!line.trimmed().isEmpty()) {
            desktop.log(QString::fromUtf8(line));
        }
    }
    switch (ending) {
    case Ending::FailedToStart:
        desktop.log(executableName + QStringLiteral(" could not be started: ") +
                    process.errorString());
        break;
    case Ending::TimedOut:
        desktop.log(executableName +
                    QStringLiteral(" was ended after %1 s, its time limit")
                        .arg(std::chrono::ceil<std::chrono::seconds>(limit).count()));
        break;
    case Ending::Stopped:
        break;
    case Ending::Finished:
        if (process.exitStatus() == QProcess::CrashExit) {
            desktop.log(executableName +
                        QStringLiteral(" was ended by signal %1").arg(process.exitCode()));
        } else if (process.exitCode() != 0 && process.exitCode() != partialTableStatus) {
            desktop.log(executableName +
                        QStringLiteral(" failed with exit status %1").arg(process.exitCode()));
        }
        break;
    }
}

bool finishedCleanly(const QProcess& process, Ending ending)
{
    return ending == Ending::Finished && process.exitStatus() == QProcess::NormalExit &&
           (process.exitCode() == 0 || process.exitCode() == partialTableStatus);
}

std::optional<WordTable> readResult(const QString& runFolder)
{
    const QString path = runFolder + QLatin1Char('/') + QLatin1String(resultFileName);
    struct stat info {};
    if (::lstat(encodePath(path).constData(), &info) != 0 || !S_ISREG(info.st_mode)) {
        return std::nullopt;
    }
    return ReadWordTableFile(path);
}

bool stopped(const WordContext& context)
{
    return context.stop && context.stop->isStopped();
}

} // namespace

QString defaultIndexerDirectory()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/" TALLYVOX_LIBEXEC_RELATIVE);
}

std::optional<WordTable> RunIndexer(const WordContext& context, const QString& posixPath,
                                    const QString& executableName)
{
    if (stopped(context)) {
        return std::nullopt;
    }
    const std::optional<QString> runFolder = makeRunFolder(context.temporaryFolder);
    if (!runFolder) {
        context.desktop.log(QStringLiteral("No private temporary folder for ") + executableName +
                            QStringLiteral(" in \"") + context.temporaryFolder + QLatin1Char('"'));
        return std::nullopt;
    }

    QProcess process;
    configure(process, context, posixPath, executableName, *runFolder);
    const std::chrono::milliseconds limit = timeLimit(context, posixPath);
    QByteArray errors;
    const Ending ending = runToEnd(process, limit, context, errors);
    logRun(context.desktop, process, ending, errors, executableName, limit);

    std::optional<WordTable> result;
    if (finishedCleanly(process, ending)) {
        result = readResult(*runFolder);
    }
    QDir(*runFolder).removeRecursively();
    return result;
}

WordTable BuildWordTable(const WordContext& context, const FileRef& file)
{
    WordTable table;
    QByteArray pathBytes;
    if (file.makePath(pathBytes, indexerPathBufferSize) != noErr) {
        return table;
    }

    // Every file system name is a path here, UTF-8 or not: the string keeps its bytes.
    const QString path = decodePath(pathBytes);

    context.desktop.log(QStringLiteral("Indexing ") + path);
    if (const char* kind = specialFileKind(pathBytes)) {
        context.desktop.log(QStringLiteral("Not indexed: \"%1\" is %2, not a document")
                                .arg(path, QLatin1String(kind)));
        return table;
    }
    std::optional<WordTable> result = RunIndexer(context, path, QStringLiteral("SearchKitIndexer"));
    // Whenever the first did not finish cleanly, unless the application is quitting.
    if (!result && !stopped(context)) {
        result = RunIndexer(context, path, QStringLiteral("SearchKitIndexer32"));
    }
    if (result) {
        table = std::move(*result);
    }
    return table;
}

} // namespace tallyvox
