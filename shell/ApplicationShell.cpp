#include "shell/ApplicationShell.h"

#include "prefs/PreferenceStore.h"
#include "shell/PreferencesWindow.h"
#include "shell/UserGuide.h"
#include "shell/WindowBounds.h"
#include "support/Desktop.h"
#include "support/IndexerStop.h"
#include "support/Translation.h"

#include <QAction>
#include <QMenu>
#include <QPropertyAnimation>

#include <algorithm>

namespace tallyvox {

namespace {
constexpr char16_t farewell[] = TALLYVOX_TRANSLATE_NOOP("tallyvox::ApplicationShell", "Bye.");
constexpr int fadeMilliseconds = 300;
} // namespace

ApplicationShell::ApplicationShell(PreferenceStore& preferences, const WordContext& words)
    : m_desktop(words.desktop), m_preferences(preferences), m_window(words.desktop),
      m_batch(m_window, words, m_jobs), m_indexerStop(words.stop)
{
    connect(&m_window, &MainWindow::documentsDropped, this, &ApplicationShell::openDocuments);
    connect(&m_window, &MainWindow::closeRequested, this,
            [this] { issueCommand(commands::Quit, Origin::MainWindow); });
    connect(&m_batch, &BatchRunner::farewellDue, this, &ApplicationShell::QuitWithFarewell);
    connect(&m_jobs, &JobQueue::idle, this, [this] {
        if (m_endWhenIdle) {
            emit eventLoopEndRequested();
        }
    });
}

ApplicationShell::~ApplicationShell()
{
    delete m_preferencesWindow;
}

void ApplicationShell::start(const QRect& screen)
{
    m_window.hide();
    if (const std::optional<QRect> bounds =
            boundsToRestore(m_preferences.readWindowBounds(), screen)) {
        m_window.setGeometry(*bounds);
    }

    m_window.show();
    addStoreAndWebsiteItems();
    m_commands = commandTable();
    for (const Command& command : m_commands) {
        if (command.action) {
            connect(command.action, &QAction::triggered, this,
                    [this, code = command.code, origin = command.origin] {
                        issueCommand(code, origin);
                    });
        }
    }
}

std::vector<ApplicationShell::Command> ApplicationShell::commandTable()
{
    const MainWindowActions& window = m_window.actions();
    const auto done = [](auto action) {
        return [action] {
            action();
            return noErr;
        };
    };
    return {
        {commands::Help, window.help, Origin::MainWindow,
         done([this] { m_desktop.openUrl(userGuideUrl()); })},
        {commands::About, window.about, Origin::MainWindow,
         done([this] { m_window.showAboutWindow(); })},
        {commands::Stop, window.stop, Origin::MainWindow,
         done([this] { m_batch.requestCancel(); })},
        {commands::Ok, window.errorOk, Origin::MainWindow, done([this] { endEventLoop(); })},
        {commands::Open, window.open, Origin::MainWindow, done([this] { openChosenFiles(); })},
        {commands::Preferences, window.preferences, Origin::MainWindow,
         done([this] { ShowPreferencesWindow(); })},
        // The flag, and the indexer ended at once rather than awaited; the standard
        // handling in issueCommand does the quitting.
        {commands::Quit, window.quit, Origin::MainWindow,
         [this] {
             m_batch.requestQuit();
             if (m_indexerStop) {
                 m_indexerStop->stop();
             }
             return eventNotHandledErr;
         }},
        {commands::Store, m_storeAction, Origin::HelpMenu, done([this] { openStorePage(); })},
        {commands::Website, m_websiteAction, Origin::HelpMenu, done([this] {
             m_desktop.openUrl(userGuideUrl(QString::fromLatin1(webAddresses::projectSection)));
         })},
    };
}

void ApplicationShell::openChosenFiles()
{
    // The files run from the timer, after the command has returned.
    const QStringList files =
        m_desktop.chooseFilesToOpen(translated("tallyvox::ApplicationShell", openPanelPrompt));
    if (!files.isEmpty()) {
        m_batch.queueDocuments(files);
    }
}

void ApplicationShell::openStorePage()
{
    // Where no software centre takes the address, the product's own page.
    if (!m_desktop.openUrl(QUrl(QString::fromLatin1(webAddresses::store)))) {
        m_desktop.openUrl(userGuideUrl(QString::fromLatin1(webAddresses::projectSection)));
    }
}

void ApplicationShell::addStoreAndWebsiteItems()
{
    QMenu* help = m_window.helpMenu();
    if (!help) {
        return;
    }
    // Both go in at the same place, so the store item ends up above the website item.
    auto* website = new QAction(tr("View in Okaluna Website..."), help);
    help->addAction(website);
    auto* store = new QAction(tr("View in Software Centre..."), help);
    help->insertAction(website, store);
    m_websiteAction = website;
    m_storeAction = store;
}

void ApplicationShell::shutdown()
{
    // Hiding leaves the bounds alone, so they are right after the farewell too.
    m_preferences.writeWindowBounds(m_window.geometry());
}

void ApplicationShell::openDocuments(const QStringList& paths)
{
    m_batch.openDocuments(paths);
}

void ApplicationShell::activate()
{
    m_desktop.raiseApplication();
}

Status ApplicationShell::issueCommand(CommandId command, Origin origin)
{
    Status result = eventNotHandledErr;
    // The preferences window sees its commands first; the application acts on what it
    // passes on.
    if (origin == Origin::PreferencesWindow && m_preferencesWindow) {
        result = m_preferencesWindow->handleCommand(command);
    }
    if (result == eventNotHandledErr) {
        const auto row = std::ranges::find(m_commands, command, &Command::code);
        // The store and website items are the Help menu's own.
        if (row != m_commands.end() &&
            (row->origin != Origin::HelpMenu || origin == Origin::HelpMenu)) {
            result = row->run();
        }
    }
    // The standard handling after everyone else: a Quit nobody took quits.
    if (result == eventNotHandledErr && command == commands::Quit) {
        endEventLoop();
        return noErr;
    }
    return result;
}

void ApplicationShell::ShowStatus(const QString& text, StatusTarget target)
{
    m_window.showStatus(text, target);
}

void ApplicationShell::QuitWithFarewell()
{
    ShowStatus(translated("tallyvox::ApplicationShell", farewell), StatusTarget::StatusText);
    auto* fade = new QPropertyAnimation(&m_window, "windowOpacity", this);
    fade->setDuration(fadeMilliseconds);
    fade->setStartValue(1.0);
    fade->setEndValue(0.0);
    connect(fade, &QPropertyAnimation::finished, this, [this] {
        m_window.hide();
        m_window.setWindowOpacity(1.0);
        endEventLoop();
    });
    fade->start(QAbstractAnimation::DeleteWhenStopped);
}

void ApplicationShell::ShowPreferencesWindow()
{
    if (!m_preferencesWindow) {
        m_preferencesWindow = new PreferencesWindow(m_preferences, m_desktop);
        connect(m_preferencesWindow, &PreferencesWindow::commandIssued, this,
                [this](CommandId command) { issueCommand(command, Origin::PreferencesWindow); });
        connect(m_preferencesWindow, &PreferencesWindow::closed, this, [this] {
            // Forgotten at once: the next 'pref' makes a new window.
            m_preferencesWindow->deleteLater();
            m_preferencesWindow = nullptr;
            // The keyboard goes back to the main window, also where no window manager
            // hands it on.
            m_window.activateWindow();
        });
    }
    ShowStatus(translated(batchTexts::context, batchTexts::helpText), StatusTarget::StatusText);
    m_preferencesWindow->loadFromStore();
    m_preferencesWindow->show();
    m_preferencesWindow->raise();
    m_preferencesWindow->activateWindow();
}

void ApplicationShell::endEventLoop()
{
    // The work in hand ends first (a run its files, a service its alert); nothing queued
    // behind it begins.
    m_jobs.clear();
    if (m_jobs.isBusy()) {
        m_endWhenIdle = true;
        return;
    }
    emit eventLoopEndRequested();
}

} // namespace tallyvox
