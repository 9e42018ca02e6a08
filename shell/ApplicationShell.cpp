#include "shell/ApplicationShell.h"

#include "prefs/PreferenceStore.h"
#include "shell/CommandBinding.h"
#include "shell/PreferencesWindow.h"
#include "shell/WindowBounds.h"
#include "support/Desktop.h"
#include "support/IndexerStop.h"
#include "support/Translation.h"

#include <QAction>
#include <QMenu>
#include <QPropertyAnimation>

namespace tallyvox {

namespace {
constexpr char16_t farewell[] = TALLYVOX_TRANSLATE_NOOP("tallyvox::ApplicationShell", "Bye.");
constexpr int fadeMilliseconds = 300;
} // namespace

ApplicationShell::ApplicationShell(PreferenceStore& preferences, const WordContext& words)
    : m_desktop(words.desktop), m_preferences(preferences), m_window(words.desktop),
      m_batch(m_window, words, m_jobs),
      m_applicationCommands(words.desktop, m_batch,
                            {[this] { ShowPreferencesWindow(); }, [this] { endEventLoop(); },
                             [stop = words.stop] {
                                 if (stop) {
                                     stop->stop();
                                 }
                             },
                             [this] { m_window.showAboutWindow(); }}),
      m_helpMenuCommands(words.desktop)
{
    connect(&m_window, &MainWindow::documentsDropped, this, &ApplicationShell::openDocuments);
    connect(&m_window, &MainWindow::errorWindowCommand, this,
            [this](CommandId command) { issueCommand(command, Origin::MainWindow); });
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

Status ApplicationShell::start(const QRect& screen)
{
    m_window.hide();
    if (const std::optional<QRect> bounds =
            boundsToRestore(m_preferences.readWindowBounds(), screen)) {
        m_window.setGeometry(*bounds);
    }

    QMenu* help = m_window.helpMenu();
    bindCommands(&m_window, this, [this, help](QObject* control, CommandId command) {
        auto* action = qobject_cast<QAction*>(control);
        const bool fromHelp = action && help && help->actions().contains(action);
        issueCommand(command, fromHelp ? Origin::HelpMenu : Origin::MainWindow);
    });
    m_window.show();
    addStoreAndWebsiteItems();
    return noErr;
}

void ApplicationShell::addStoreAndWebsiteItems()
{
    QMenu* help = m_window.helpMenu();
    if (!help) {
        return;
    }
    // Both go in at the same place, so the store item ends up above the website item.
    auto* website = new QAction(tr("View in Okaluna Website..."), help);
    website->setProperty("commandId", commands::Website.toString());
    help->addAction(website);
    auto* store = new QAction(tr("View in Software Centre..."), help);
    store->setProperty("commandId", commands::Store.toString());
    help->insertAction(website, store);
    for (QAction* action : {store, website}) {
        const CommandId command = commandOf(*action);
        connect(action, &QAction::triggered, this,
                [this, command] { issueCommand(command, Origin::HelpMenu); });
    }
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
    CommandHandler* first = nullptr;
    if (origin == Origin::HelpMenu) {
        first = &m_helpMenuCommands;
    } else if (origin == Origin::PreferencesWindow) {
        first = m_preferencesWindow.data();
    }
    const Status result = dispatchCommand(command, {first, &m_applicationCommands});
    // The standard handling at the end of every chain: a Quit nobody took quits.
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
