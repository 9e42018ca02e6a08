#pragma once

#include "shell/BatchRunner.h"
#include "shell/Command.h"
#include "shell/JobQueue.h"
#include "shell/MainWindow.h"
#include "shell/PreferencesWindow.h"
#include "support/Translation.h"

#include <QObject>
#include <QPointer>

#include <functional>
#include <vector>

class QAction;

namespace tallyvox {

class IndexerStop;
class PreferenceStore;

inline constexpr char16_t openPanelPrompt[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::ApplicationShell", "Select one or more files to extract words from.");

/// The windowed application: the main window, the batch run, the commands and the
/// preferences window, from start-up to the saving of the window bounds.
class ApplicationShell : public QObject {
    Q_OBJECT
public:
    /// The batch run makes its lists with words; Quit ends the indexers through its stop,
    /// when there is one. desktop and preferences are the ones words holds.
    ApplicationShell(PreferenceStore& preferences, const WordContext& words);
    ~ApplicationShell() override;

    /// Restores the bounds against the screen rectangle, shows the window, adds the Help
    /// menu's store and website items and connects every command's action.
    void start(const QRect& screen);
    /// Saves the window's bounds; the loop has ended.
    void shutdown();

    /// The open-documents handler: files from the command line, the bus or a drop.
    void openDocuments(const QStringList& paths);
    /// Brings the application forward, as a launch without files does.
    void activate();

    /// Where a command comes from: the preferences window sees its own commands first,
    /// and the Help menu's store and website items are handled from that menu only.
    enum class Origin { MainWindow, HelpMenu, PreferencesWindow };
    /// Carries out a command: noErr when it was handled, eventNotHandledErr when nothing
    /// took it.
    Status issueCommand(CommandId command, Origin origin);

    /// Sets the status text (target 1) or the progress text (target 2).
    void ShowStatus(const QString& text, StatusTarget target);
    /// "Bye.", the window fades out, then the event loop ends.
    void QuitWithFarewell();

    MainWindow& mainWindow() { return m_window; }
    BatchRunner& batch() { return m_batch; }
    /// The batch runs and the service requests, one after another.
    JobQueue& jobs() { return m_jobs; }
    /// The preferences window while it is open, else null.
    PreferencesWindow* preferencesWindow() const { return m_preferencesWindow; }

signals:
    /// The event loop is to end now (after the work in hand has finished).
    void eventLoopEndRequested();

private:
    /// A command the application carries out: its code, the action of the menu item or
    /// button that issues it, and what it does (eventNotHandledErr passes it on).
    struct Command {
        CommandId code;
        QAction* action = nullptr;
        Origin origin = Origin::MainWindow;
        std::function<Status()> run;
    };
    /// Every command of the application, in one place: a new menu item is one row here.
    std::vector<Command> commandTable();

    void ShowPreferencesWindow();
    void endEventLoop();
    void addStoreAndWebsiteItems();
    void openChosenFiles();
    void openStorePage();

    Desktop& m_desktop;
    PreferenceStore& m_preferences;
    MainWindow m_window;
    JobQueue m_jobs;
    BatchRunner m_batch;
    IndexerStop* m_indexerStop;
    QAction* m_storeAction = nullptr;
    QAction* m_websiteAction = nullptr;
    std::vector<Command> m_commands;
    QPointer<PreferencesWindow> m_preferencesWindow;
    bool m_endWhenIdle = false;
};

} // namespace tallyvox
