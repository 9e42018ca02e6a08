#pragma once

#include "words/WordContext.h"

#include <memory>

namespace tallyvox {

class ProcessIndexer;
class TemporaryFolderLease;

/// What word extraction runs on in this process: the indexer executables, or the stand-in
/// given, with this run's temporary folder.
class Extraction {
public:
    Extraction(Desktop& desktop, const PreferenceStore& preferences,
               const TemporaryFolderLease& temporary, IndexerStop* stop = nullptr,
               Indexer* indexer = nullptr);
    ~Extraction();
    Extraction(const Extraction&) = delete;
    Extraction& operator=(const Extraction&) = delete;

    const WordContext& context() const { return m_context; }

private:
    std::unique_ptr<ProcessIndexer> m_processIndexer;
    WordContext m_context;
};

/// TALLYVOX_JOBS: how many files are indexed at once; at most one a core, which is also
/// the default.
int filesAtOnce();

} // namespace tallyvox
