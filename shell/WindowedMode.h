#pragma once

#include "services/ServiceDispatcher.h"
#include "shell/ApplicationBus.h"

#include <QRect>

#include <functional>
#include <optional>

class QIODevice;
class QTextStream;

namespace tallyvox {

class ApplicationShell;
class Desktop;
class Indexer;
struct CommandLine;

/// How a launch reaches the instance that is already running, if there is one: the
/// session bus, or a test's stand-in.
class InstanceLink {
public:
    InstanceLink() = default;
    virtual ~InstanceLink() = default;
    InstanceLink(const InstanceLink&) = delete;
    InstanceLink& operator=(const InstanceLink&) = delete;

    /// Makes object the single instance, unless another instance has that place.
    virtual InstanceClaim claim(ApplicationBusObject& object) = 0;
    /// Hands files to the running instance, or brings it forward when there are none.
    /// True when it answered.
    virtual bool forwardDocuments(const QStringList& paths) = 0;
    /// Asks the running instance to perform a service, with the pasteboard or reading
    /// the selection itself. True when it answered.
    virtual bool forwardService(const QString& name, const std::optional<Pasteboard>& pasteboard,
                                SelectionSource source) = 0;
};

/// The session bus as the link to the running instance.
class SessionBusLink final : public InstanceLink {
public:
    SessionBusLink();

    InstanceClaim claim(ApplicationBusObject& object) override;
    bool forwardDocuments(const QStringList& paths) override;
    bool forwardService(const QString& name, const std::optional<Pasteboard>& pasteboard,
                        SelectionSource source) override;

private:
    QDBusConnection m_bus;
};

/// What the windowed application runs on once the application object exists: the
/// process's own desktop, bus, streams and event loop, or a test's.
struct WindowedSession {
    Desktop& desktop;
    InstanceLink& instance;
    QTextStream& err;
    /// Standard input, for --stdin; opened for reading.
    QIODevice& input;
    /// False when no window system could be had: only a hand-over to a running instance
    /// can then succeed.
    bool displayOpened = true;
    /// The screen the window's saved bounds are fitted to.
    QRect screen;
    /// Called with the main window before it shows (the desktop's dialogs belong to it).
    std::function<void(QWidget& window)> windowMade;
    /// Runs the event loop; the shell's eventLoopEndRequested quits the application's.
    std::function<void(ApplicationShell& shell)> eventLoop;
    /// The indexer executables when null.
    Indexer* indexer = nullptr;
};

/// The windowed application, once the application object exists: hands the launch to the
/// instance already running, or becomes the instance, opens the command line's files or
/// performs its service, and runs until it quits. Returns the exit status that --help
/// gives: 0 done or handed over; 1 the running instance did not answer, or there is no
/// display to show the window on.
int runWindowedMode(const CommandLine& commandLine, const WindowedSession& session);

} // namespace tallyvox
