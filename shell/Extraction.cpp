#include "shell/Extraction.h"

#include "shell/TemporaryFolderLease.h"
#include "words/ProcessIndexer.h"

#include <QThread>

#include <algorithm>

namespace tallyvox {

namespace {

// TALLYVOX_INDEXER_TIMEOUT: the seconds an indexer may go without reading further before
// it is ended; anything but a positive number keeps the default.
std::chrono::milliseconds indexerStallLimit()
{
    bool ok = false;
    const int seconds = qEnvironmentVariableIntValue("TALLYVOX_INDEXER_TIMEOUT", &ok);
    return ok && seconds > 0 ? std::chrono::milliseconds(std::chrono::seconds(seconds))
                             : defaultIndexerStallLimit;
}

std::unique_ptr<ProcessIndexer>
processIndexer(Desktop& desktop, const TemporaryFolderLease& temporary, Indexer* given)
{
    if (given) {
        return nullptr;
    }
    return std::make_unique<ProcessIndexer>(
        desktop,
        ProcessIndexer::Setup{defaultIndexerDirectory(), temporary.path(), indexerStallLimit()});
}

} // namespace

Extraction::Extraction(Desktop& desktop, const PreferenceStore& preferences,
                       const TemporaryFolderLease& temporary, IndexerStop* stop, Indexer* indexer)
    : m_processIndexer(processIndexer(desktop, temporary, indexer)),
      m_context{desktop, preferences, indexer ? *indexer : *m_processIndexer, temporary.path(),
                stop}
{}

Extraction::~Extraction() = default;

int filesAtOnce()
{
    const int cores = std::max(1, QThread::idealThreadCount());
    bool ok = false;
    const int asked = qEnvironmentVariableIntValue("TALLYVOX_JOBS", &ok);
    return ok && asked > 0 ? std::min(asked, cores) : cores;
}

} // namespace tallyvox
