#pragma once

#include "services/ServiceDispatcher.h"
#include "shell/ApplicationBus.h"
#include "shell/CommandLine.h"

#include <QObject>

class QIODevice;

namespace tallyvox {

class WorkGate;

/// Performs the services that ActivateAction asks for. Each request is only queued, so
/// the bus call is answered before any alert or panel shows, and requests run one after
/// another: one that arrives while an alert of another is open waits for it to end. With
/// a gate, requests that arrive during a batch run wait until the run has ended.
class ServiceActions final : public QObject, public ActionHandler {
public:
    explicit ServiceActions(ServiceContext context, WorkGate* gate = nullptr);

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

private:
    struct Pending {
        ServiceRequest request;
        /// Read the selection just before performing: there was no pasteboard.
        std::optional<SelectionSource> selection;
    };
    void enqueue(Pending pending);
    void performPending();

    ServiceContext m_context;
    WorkGate* m_gate;
    QList<Pending> m_pending;
    bool m_performing = false;
};

/// The pasteboards of a --service command line: one per file, else one from the text,
/// the selection, the clipboard or input. A selection that holds nothing gives an empty one.
QList<Pasteboard> commandLinePasteboards(const CommandLine& commandLine, Desktop& desktop,
                                         QIODevice& input);

/// The selection a command line reads: the clipboard for --clipboard, else primary.
SelectionSource commandLineSelection(const CommandLine& commandLine);

} // namespace tallyvox
