#include "words/IndexerClient.h"

#include "support/Desktop.h"
#include "support/FilePath.h"
#include "support/IndexerStop.h"

#include <sys/stat.h>

namespace tallyvox {

namespace {

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

bool stopped(const WordContext& context)
{
    return context.stop && context.stop->isStopped();
}

} // namespace

WordTableJob::WordTableJob(const WordContext& context, FileRef file, int ngramLength, bool typeRuns)
    : m_context(context), m_file(std::move(file)), m_ngramLength(ngramLength), m_typeRuns(typeRuns)
{
    if (m_context.stop) {
        connect(m_context.stop, &IndexerStop::stopped, this, &WordTableJob::stop);
    }
}

WordTableJob::~WordTableJob() = default;

void WordTableJob::start()
{
    QByteArray pathBytes;
    if (m_file.makePath(pathBytes, indexerPathBufferSize) != noErr) {
        end(IndexerEnding::Failed);
        return;
    }
    // Every file system name is a path here, UTF-8 or not: the string keeps its bytes.
    m_path = decodePath(pathBytes);
    if (stopped(m_context)) {
        end(IndexerEnding::Stopped);
        return;
    }
    m_context.desktop.log(QStringLiteral("Indexing ") + m_path);
    if (const char* kind = specialFileKind(pathBytes)) {
        m_context.desktop.log(QStringLiteral("Not indexed: \"%1\" is %2, not a document")
                                  .arg(m_path, QLatin1String(kind)));
        end(IndexerEnding::Failed);
        return;
    }
    runIndexer(QStringLiteral("SearchKitIndexer"));
}

void WordTableJob::stop()
{
    if (m_finished) {
        return;
    }
    if (m_run) {
        m_run->stop();
    } else {
        end(IndexerEnding::Stopped);
    }
}

void WordTableJob::runIndexer(const QString& executableName)
{
    // The first run may be the one whose end is being heard now.
    if (m_run) {
        m_run.release()->deleteLater();
    }
    m_run = m_context.indexer.start(m_path, executableName, m_ngramLength, m_typeRuns);
    connect(m_run.get(), &IndexerRun::progressed, this, &WordTableJob::progressed);
    connect(m_run.get(), &IndexerRun::finished, this, &WordTableJob::runEnded);
}

void WordTableJob::runEnded()
{
    const IndexerEnding ending = m_run->ending();
    if (ending == IndexerEnding::Complete || ending == IndexerEnding::Partial) {
        m_table = std::move(*m_run->table());
        end(ending);
        return;
    }
    // The fallback whenever the first did not finish cleanly, unless the application is
    // quitting.
    if (ending == IndexerEnding::Failed && !m_fallbackTried && !stopped(m_context)) {
        m_fallbackTried = true;
        runIndexer(QStringLiteral("SearchKitIndexer32"));
        return;
    }
    end(ending);
}

void WordTableJob::end(IndexerEnding ending)
{
    m_ending = ending;
    m_finished = true;
    // Said from the event loop, as a run's end is, so no caller hears it inside start().
    QMetaObject::invokeMethod(this, &WordTableJob::finished, Qt::QueuedConnection);
}

std::unique_ptr<WordTableJob> BuildWordTable(const WordContext& context, const FileRef& file,
                                             int ngramLength, bool typeRuns)
{
    auto job = std::make_unique<WordTableJob>(context, file, ngramLength, typeRuns);
    job->start();
    return job;
}

} // namespace tallyvox
