#pragma once

#include "shell/Command.h"
#include "support/Translation.h"

#include <QUrl>

#include <functional>
#include <initializer_list>

namespace tallyvox {

class BatchRunner;
class Desktop;

/// The product's pages. There is no web site yet: 'HELP' opens the user guide installed
/// with the program, and the website item the guide's section on the project.
namespace webAddresses {
/// 'WEB1' and the About window: the guide's section (its HTML id) on the project.
inline constexpr char projectSection[] = "project";
/// 'MAS1': the store page, which the desktop's software centre shows.
inline constexpr char store[] = "appstream:com.okaluna.Tallyvox";
} // namespace webAddresses

/// The installed user guide, found relative to the program as its indexers are (the build
/// tree mirrors that), at one of its sections when one is named.
QUrl userGuideUrl(const QString& section = {});

inline constexpr char16_t openPanelPrompt[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::ApplicationCommands", "Select one or more files to extract words from.");

/// Offers a command to each handler in turn until one handles it. Null links are
/// skipped. The result is the last handler's status (eventNotHandledErr if nobody took it).
Status dispatchCommand(CommandId command, std::initializer_list<CommandHandler*> chain);

/// What the application does with the commands that reach it.
struct ApplicationActions {
    std::function<void()> showPreferences;
    /// Ends the event loop; the shutdown follows.
    std::function<void()> endEventLoop;
    /// Ends the indexer running now, and any later one (Quit).
    std::function<void()> stopIndexer;
    /// Opens the About window.
    std::function<void()> showAbout;
};

/// The application's command handler: help page, About, stop, OK, Open, Preferences, Quit.
class ApplicationCommands final : public CommandHandler {
public:
    ApplicationCommands(Desktop& desktop, BatchRunner& batch, ApplicationActions actions);

    Status handleCommand(CommandId command) override;

private:
    Desktop& m_desktop;
    BatchRunner& m_batch;
    ApplicationActions m_actions;
};

/// The Help menu's own handler for the store and website items.
class HelpMenuCommands final : public CommandHandler {
public:
    explicit HelpMenuCommands(Desktop& desktop) : m_desktop(desktop) {}

    Status handleCommand(CommandId command) override;

private:
    Desktop& m_desktop;
};

} // namespace tallyvox
