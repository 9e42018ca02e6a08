#pragma once

namespace tallyvox::indexer {

/// How many threads (counting threads, PDF page children) this indexer may keep busy:
/// TALLYVOX_INDEXER_THREADS when it is a positive integer, else fallback. The application
/// sets it when it runs several indexers at once, so that together they do not ask for
/// more cores than the machine has.
unsigned allowedThreads(unsigned fallback);

/// The cores this process may run on.
unsigned availableCores();

} // namespace tallyvox::indexer
