#pragma once

#include "support/Status.h"
#include "words/ListProblem.h"

#include <QObject>

namespace tallyvox {

/// One file's operation, in two steps: start() does the slow part (the indexer, the
/// ordering and rendering) without holding the event loop, and ready() says when that is
/// done; commit() then finishes on the caller's thread, in the order the caller chooses:
/// the list written and handed to the editor, or the count shown. Several jobs may be
/// prepared at once while their results still reach the user one by one, in order.
class FileJob : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Begins the work; ready() follows from the event loop, never from within start().
    virtual void start() = 0;
    /// Ends the work early (the application quits): ready() follows soon, and commit()
    /// then does nothing.
    virtual void stop() = 0;
    /// What the user sees of the file: a list written and opened, an alert. Once, after
    /// ready(). The status is that of a list that could not be written, else noErr.
    virtual Status commit() = 0;

    bool isReady() const { return m_ready; }
    /// True once ready when the file could not be processed: neither indexer gave its
    /// words (an empty document is no failure).
    virtual bool failed() const { return false; }
    /// Once ready: why the file gave no words or only part of them, if it did.
    virtual ListProblem problem() const { return {}; }

signals:
    /// How far the indexer has read the file, when it says.
    void progressed(quint64 done, quint64 total);
    void ready();

protected:
    /// Marks the job ready and says so from the event loop.
    void becomeReady()
    {
        if (m_ready) {
            return;
        }
        m_ready = true;
        QMetaObject::invokeMethod(this, &FileJob::ready, Qt::QueuedConnection);
    }

private:
    bool m_ready = false;
};

} // namespace tallyvox
