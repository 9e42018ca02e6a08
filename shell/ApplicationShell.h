#pragma once

#include "shell/ApplicationCommands.h"
#include "shell/BatchRunner.h"
#include "shell/MainWindow.h"
#include "shell/PreferencesWindow.h"
#include "shell/WorkGate.h"

#include <QObject>
#include <QPointer>

namespace tallyvox {

class IndexerProgress;
class IndexerStop;
class PreferenceStore;

/// The windowed application: the main window, the batch run, the command chains and
/// the preferences window, from start-up to the saving of the window bounds.
class ApplicationShell : public QObject {
    Q_OBJECT
public:
    /// Quit ends the indexer through indexerStop, when there is one; the batch run shows
    /// indexerProgress, when there is one.
    ApplicationShell(Desktop& desktop, PreferenceStore& preferences, FileProcessor processor,
                     IndexerStop* indexerStop = nullptr,
                     IndexerProgress* indexerProgress = nullptr);
    ~ApplicationShell() override;

    /// Restores the bounds against the screen rectangle, shows the window and adds
    /// the Help menu's store and website items. Returns noErr.
    Status start(const QRect& screen);
    /// Saves the window's bounds; the loop has ended.
    void shutdown();

    /// The open-documents handler: files from the command line, the bus or a drop.
    void openDocuments(const QStringList& paths);
    /// Brings the application forward, as a launch without files does.
    void activate();

    /// Offers a command to the chain of the place it came from.
    enum class Origin { MainWindow, HelpMenu, PreferencesWindow };
    Status issueCommand(CommandId command, Origin origin);

    /// Sets the status text (target 1) or the progress text (target 2).
    void ShowStatus(const QString& text, StatusTarget target);
    /// "Bye.", the window fades out, then the event loop ends.
    void QuitWithFarewell();

    MainWindow& mainWindow() { return m_window; }
    BatchRunner& batch() { return m_batch; }
    /// Taken by the batch run and by service requests, so one never runs inside the other.
    WorkGate& workGate() { return m_gate; }
    /// The preferences window while it is open, else null.
    PreferencesWindow* preferencesWindow() const { return m_preferencesWindow; }

signals:
    /// The event loop is to end now (after any run in progress has finished).
    void eventLoopEndRequested();

private:
    void ShowPreferencesWindow();
    void endEventLoop();
    void addStoreAndWebsiteItems();

    Desktop& m_desktop;
    PreferenceStore& m_preferences;
    MainWindow m_window;
    WorkGate m_gate;
    BatchRunner m_batch;
    ApplicationCommands m_applicationCommands;
    HelpMenuCommands m_helpMenuCommands;
    QPointer<PreferencesWindow> m_preferencesWindow;
    bool m_endAfterRun = false;
};

} // namespace tallyvox
