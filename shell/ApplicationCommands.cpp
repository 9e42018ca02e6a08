#include "shell/ApplicationCommands.h"

#include "shell/BatchRunner.h"
#include "shell/Translations.h"
#include "support/Desktop.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace tallyvox {

QUrl userGuideUrl(const QString& section)
{
    const QString guide = QDir::cleanPath(QCoreApplication::applicationDirPath() +
                                          QStringLiteral("/" TALLYVOX_GUIDE_RELATIVE));
    // The guide is English; in another language its title page, which links into it.
    const QString language = installedLanguage();
    for (const QString& name : {language, language.section(u'_', 0, 0)}) {
        const QString titlePage = QString(guide).replace(QStringLiteral("/help/C/"),
                                                         QStringLiteral("/help/") + name + u'/');
        if (section.isEmpty() && !name.isEmpty() && QFileInfo::exists(titlePage)) {
            return QUrl::fromLocalFile(titlePage);
        }
    }
    QUrl url = QUrl::fromLocalFile(guide);
    if (!section.isEmpty()) {
        url.setFragment(section);
    }
    return url;
}

Status dispatchCommand(CommandId command, std::initializer_list<CommandHandler*> chain)
{
    Status result = eventNotHandledErr;
    for (CommandHandler* handler : chain) {
        if (!handler) {
            continue;
        }
        result = handler->handleCommand(command);
        if (result != eventNotHandledErr) {
            break;
        }
    }
    return result;
}

ApplicationCommands::ApplicationCommands(Desktop& desktop, BatchRunner& batch,
                                         ApplicationActions actions)
    : m_desktop(desktop), m_batch(batch), m_actions(std::move(actions))
{}

Status ApplicationCommands::handleCommand(CommandId command)
{
    if (command == commands::Help) {
        m_desktop.openUrl(userGuideUrl());
    } else if (command == commands::About && m_actions.showAbout) {
        m_actions.showAbout();
    } else if (command == commands::Stop) {
        m_batch.requestCancel();
    } else if (command == commands::Ok) {
        m_actions.endEventLoop();
    } else if (command == commands::Open) {
        // The files run from the timer, after this handler has returned.
        const QStringList files = m_desktop.chooseFilesToOpen(
            translated("tallyvox::ApplicationCommands", openPanelPrompt));
        if (!files.isEmpty()) {
            m_batch.queueDocuments(files);
        }
    } else if (command == commands::Preferences) {
        m_actions.showPreferences();
    } else if (command == commands::Quit) {
        // The flag, and the indexer ended at once rather than awaited; the standard
        // handling after us does the quitting.
        m_batch.requestQuit();
        if (m_actions.stopIndexer) {
            m_actions.stopIndexer();
        }
        return eventNotHandledErr;
    } else {
        return eventNotHandledErr;
    }
    return noErr;
}

Status HelpMenuCommands::handleCommand(CommandId command)
{
    if (command == commands::Website) {
        m_desktop.openUrl(userGuideUrl(QString::fromLatin1(webAddresses::projectSection)));
    } else if (command == commands::Store) {
        // Where no software centre takes the address, the product's own page.
        if (!m_desktop.openUrl(QUrl(QString::fromLatin1(webAddresses::store)))) {
            m_desktop.openUrl(userGuideUrl(QString::fromLatin1(webAddresses::projectSection)));
        }
    } else {
        return eventNotHandledErr;
    }
    return noErr;
}

} // namespace tallyvox
