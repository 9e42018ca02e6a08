#pragma once

#include <QObject>
#include <QTimer>

namespace tallyvox {

/// One piece of work at a time. The batch run and the service requests both wait in
/// nested event loops (for the indexer, for an alert), where the other would otherwise
/// start and run inside that wait. Whoever finds the gate taken waits for released().
class WorkGate final : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Takes the gate; false when other work holds it.
    bool tryEnter()
    {
        if (m_taken) {
            return false;
        }
        m_taken = true;
        return true;
    }
    /// Gives the gate back; released() follows from the event loop, outside the caller.
    void leave()
    {
        m_taken = false;
        QTimer::singleShot(0, this, [this] { emit released(); });
    }
    bool isTaken() const { return m_taken; }

signals:
    void released();

private:
    bool m_taken = false;
};

} // namespace tallyvox
