#include "words/Indexer.h"

namespace tallyvox {

void IndexerRun::finish(IndexerEnding ending, std::optional<WordTable> table)
{
    if (m_finished) {
        return;
    }
    m_finished = true;
    m_ending = ending;
    m_table = std::move(table);
    // Whoever started the run may still be inside that call; it hears of the end later.
    QMetaObject::invokeMethod(this, &IndexerRun::finished, Qt::QueuedConnection);
}

} // namespace tallyvox
