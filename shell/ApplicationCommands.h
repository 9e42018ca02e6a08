#pragma once

#include "shell/Command.h"

#include <QUrl>

#include <functional>
#include <initializer_list>

namespace tallyvox {

class BatchRunner;
class Desktop;

/// The product's addresses on the web.
namespace webAddresses {
/// 'HELP': the product page's help section.
inline constexpr char help[] = "https://okaluna.example/tallyvox/help";
/// 'WEB1': the product page on the maker's site.
inline constexpr char website[] = "https://okaluna.example/tallyvox";
/// 'MAS1': the store page, which the desktop's software centre shows.
inline constexpr char store[] = "appstream:com.okaluna.Tallyvox";
} // namespace webAddresses

inline constexpr char16_t openPanelPrompt[] = u"Select one or more files to extract words from.";

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
};

/// The application's command handler: help page, stop, OK, Open, Preferences, Quit.
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
