#include "shell/JobQueue.h"

namespace tallyvox {

void JobQueue::add(Work work)
{
    m_waiting.push_back(std::move(work));
    if (!m_busy) {
        startNext();
    }
}

void JobQueue::startNext()
{
    // What waited may have been cleared meanwhile.
    if (m_waiting.empty()) {
        m_busy = false;
        emit idle();
        return;
    }
    m_busy = true;
    Work work = std::move(m_waiting.front());
    m_waiting.pop_front();
    const quint64 generation = ++m_generation;
    work([this, generation] {
        if (generation != m_generation) {
            return;
        }
        ++m_generation;
        if (m_waiting.empty()) {
            m_busy = false;
            emit idle();
            return;
        }
        // From the event loop: the piece that is done may still be on the stack.
        QMetaObject::invokeMethod(this, &JobQueue::startNext, Qt::QueuedConnection);
    });
}

} // namespace tallyvox
