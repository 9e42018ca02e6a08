#pragma once

#include <QObject>

namespace tallyvox {

/// How the shell ends the indexer that is running now, at once, when the application
/// quits. Once stopped, no further indexer starts in this process. The application owns
/// one and hands it to the indexer client (in the word context) and to the shell.
class IndexerStop final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    void stop()
    {
        m_stopped = true;
        emit stopped();
    }
    bool isStopped() const { return m_stopped; }

signals:
    void stopped();

private:
    bool m_stopped = false;
};

} // namespace tallyvox
