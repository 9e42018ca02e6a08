#pragma once

#include "services/ServiceDispatcher.h"
#include "shell/ApplicationBus.h"
#include "shell/CommandLine.h"

#include <QObject>

class QIODevice;

namespace tallyvox {

class JobQueue;

/// Performs the services that ActivateAction asks for. Each request is only queued in the
/// application's job queue, so the bus call is answered before any alert or panel shows,
/// and requests run one after another, after the batch run they arrive in: one that
/// arrives while an alert of another is open waits for it to end.
class ServiceActions final : public QObject, public ActionHandler {
public:
    ServiceActions(ServiceContext context, JobQueue& queue);

    /// Every name is performed, like every service event of the original: a name that is
    /// no service takes the temporary-file route and ends there. With no parameter (a
    /// desktop-file action activated over the bus) the selection named in platformData
    /// is read, the primary selection by default.
    bool activateAction(const QString& name, const QVariantList& parameter,
                        const QVariantMap& platformData) override;

    /// Performs a request from the event loop; without a pasteboard, with the items of
    /// the selection read at that moment.
    void queueRequest(const QString& name, std::optional<Pasteboard> pasteboard,
                      SelectionSource source);

    /// Adds a request to the job queue now; it starts at once when nothing else is in
    /// hand. selection: read it just before performing, as there was no pasteboard.
    void add(ServiceRequest request, std::optional<SelectionSource> selection = std::nullopt);

    /// True once a request's file could not be processed (neither indexer gave its words).
    bool anyFailed() const { return m_anyFailed; }

private:
    /// add(), from the event loop.
    void enqueue(ServiceRequest request, std::optional<SelectionSource> selection);

    ServiceContext m_context;
    JobQueue& m_queue;
    std::unique_ptr<ServiceJob> m_job;
    bool m_anyFailed = false;
};

/// The pasteboards of a --service command line: one per file, else one from the text,
/// the selection, the clipboard or input. A selection that holds nothing gives an empty one.
QList<Pasteboard> commandLinePasteboards(const CommandLine& commandLine, Desktop& desktop,
                                         QIODevice& input);

/// The selection a command line reads: the clipboard for --clipboard, else primary.
SelectionSource commandLineSelection(const CommandLine& commandLine);

} // namespace tallyvox
