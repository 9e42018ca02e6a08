#pragma once

#include <QObject>

#include <deque>
#include <functional>

namespace tallyvox {

/// The application's work, one piece at a time and in the order it arrived: a batch run
/// of files, a service request. A piece is started with a function to call when it is
/// done; the next one starts from the event loop after that, so no piece ever runs
/// inside another (an alert's own loop included).
class JobQueue final : public QObject {
    Q_OBJECT
public:
    /// Tells the queue that the piece it started is done.
    using Done = std::function<void()>;
    /// Starts a piece of work; it calls done exactly once, now or later.
    using Work = std::function<void(Done done)>;

    using QObject::QObject;

    /// Queues work; it starts now when nothing else is in hand, else in its turn.
    void add(Work work);
    /// Forgets the work that has not started (the application quits).
    void clear() { m_waiting.clear(); }

    /// True from the start of a piece until the queue is empty again.
    bool isBusy() const { return m_busy; }
    /// Pieces waiting behind the one in hand.
    std::size_t waiting() const { return m_waiting.size(); }

signals:
    /// The last piece is done and nothing waits; said from within its done call.
    void idle();

private:
    void startNext();

    std::deque<Work> m_waiting;
    bool m_busy = false;
    // Each piece's done function works once; a stale one does nothing.
    quint64 m_generation = 0;
};

} // namespace tallyvox
