#include "shell/WindowedMode.h"

#include "prefs/PreferenceStore.h"
#include "shell/ApplicationShell.h"
#include "shell/CommandLine.h"
#include "shell/Extraction.h"
#include "shell/ServiceActions.h"
#include "shell/ServiceBus.h"
#include "shell/TemporaryFolderLease.h"
#include "support/Desktop.h"
#include "support/IndexerStop.h"

#include <QCoreApplication>
#include <QTextStream>
#include <QTimer>

#include <algorithm>

namespace tallyvox {

namespace {

// A selection this process could not read (on Wayland, without the focus) is left for the
// instance that performs the service to read.
std::optional<Pasteboard> pasteboardToSend(const CommandLine& commandLine,
                                           const Pasteboard& pasteboard)
{
    const bool selection = commandLine.serviceSource == ServiceSource::Selection ||
                           commandLine.serviceSource == ServiceSource::Clipboard;
    if (pasteboard.isEmpty() && selection) {
        return std::nullopt;
    }
    return pasteboard;
}

// Hands the launch to the running instance: its service, else its files. True when the
// instance answered every request.
bool handOver(InstanceLink& instance, const CommandLine& commandLine,
              const QList<Pasteboard>& requests)
{
    if (commandLine.serviceName.isEmpty()) {
        return instance.forwardDocuments(commandLine.files);
    }
    const SelectionSource source = commandLineSelection(commandLine);
    return std::ranges::all_of(requests, [&](const Pasteboard& pasteboard) {
        return instance.forwardService(commandLine.serviceName,
                                       pasteboardToSend(commandLine, pasteboard), source);
    });
}

/// The running application, reached over the bus.
class ShellDocumentHandler final : public DocumentHandler {
public:
    explicit ShellDocumentHandler(ApplicationShell& shell) : m_shell(shell) {}
    void openDocuments(const QStringList& paths) override { m_shell.openDocuments(paths); }
    void activate() override { m_shell.activate(); }

private:
    ApplicationShell& m_shell;
};

// Becomes the running instance and runs until the user quits.
void runInstance(const CommandLine& commandLine, const QList<Pasteboard>& requests,
                 ApplicationBusObject& busObject, const WindowedSession& session)
{
    PreferenceStore preferences;
    const TemporaryFolderLease temporary;
    IndexerStop indexerStop;
    const Extraction extraction(session.desktop, preferences, temporary, &indexerStop,
                                session.indexer);
    ApplicationShell shell(preferences, extraction.context());
    // From the start: a run handed over while an alert below is open may end it.
    QObject::connect(&shell, &ApplicationShell::eventLoopEndRequested, QCoreApplication::instance(),
                     &QCoreApplication::quit);
    if (session.windowMade) {
        session.windowMade(shell.mainWindow());
    }
    shell.batch().setConcurrency(filesAtOnce());
    ShellDocumentHandler documents(shell);
    busObject.setDocumentHandler(&documents);
    ServiceActions actions({extraction.context(),
                            [&shell](std::chrono::milliseconds delay) {
                                QTimer::singleShot(delay, &shell,
                                                   &ApplicationShell::QuitWithFarewell);
                            }},
                           shell.jobs());
    busObject.setActionHandler(&actions);

    shell.start(session.screen);
    if (const std::optional<QString> refused = preferences.refusal()) {
        session.desktop.alert(*refused);
    }
    temporary.prepare(session.desktop);
    // Files and services of the launch are performed once the loop runs, as requests
    // from the bus would be.
    if (!commandLine.serviceName.isEmpty()) {
        for (const Pasteboard& pasteboard : requests) {
            actions.queueRequest(commandLine.serviceName, pasteboardToSend(commandLine, pasteboard),
                                 commandLineSelection(commandLine));
        }
    } else if (!commandLine.files.isEmpty()) {
        shell.openDocuments(commandLine.files);
    }
    session.eventLoop(shell);
    shell.shutdown();
    busObject.setDocumentHandler(nullptr);
    busObject.setActionHandler(nullptr);
}

} // namespace

SessionBusLink::SessionBusLink() : m_bus(QDBusConnection::sessionBus()) {}

InstanceClaim SessionBusLink::claim(ApplicationBusObject& object)
{
    return claimSingleInstance(m_bus, object);
}

bool SessionBusLink::forwardDocuments(const QStringList& paths)
{
    return forwardToRunningInstance(m_bus, paths);
}

bool SessionBusLink::forwardService(const QString& name,
                                    const std::optional<Pasteboard>& pasteboard,
                                    SelectionSource source)
{
    return forwardServiceRequest(m_bus, name, pasteboard, source);
}

int runWindowedMode(const CommandLine& commandLine, const WindowedSession& session)
{
    // Read before anything else, while the selection is still the one the user meant.
    QList<Pasteboard> requests;
    if (!commandLine.serviceName.isEmpty()) {
        requests = commandLinePasteboards(commandLine, session.desktop, session.input);
    }
    ApplicationBusObject busObject;
    if (session.instance.claim(busObject) == InstanceClaim::OtherInstanceRuns) {
        if (handOver(session.instance, commandLine, requests)) {
            return 0;
        }
        session.err << QCoreApplication::translate(
            "tallyvox::Startup", "tallyvox: the running instance did not answer\n");
        return 1;
    }
    if (!session.displayOpened) {
        session.err << QCoreApplication::translate(
            "tallyvox::Startup",
            "tallyvox: cannot open the display to show the window (--console runs without one)\n");
        return 1;
    }
    runInstance(commandLine, requests, busObject, session);
    return 0;
}

} // namespace tallyvox
