#pragma once

#include <QObject>

namespace tallyvox {

/// How far the running indexer has read its input, as it reports it. The indexer client
/// passes each report on; the batch run shows it in the main window's progress text. The
/// application owns one and hands it to both, like the indexer stop.
class IndexerProgress final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// done bytes of total read; total is 0 when the indexer cannot know the size.
    void report(quint64 done, quint64 total) { emit progressed(done, total); }

signals:
    void progressed(quint64 done, quint64 total);
};

} // namespace tallyvox
