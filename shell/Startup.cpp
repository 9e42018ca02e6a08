#include "shell/Startup.h"
#include "support/FilePath.h"

#include "prefs/PreferenceStore.h"
#include "shell/AccessibleComboBox.h"
#include "shell/ApplicationBus.h"
#include "shell/ApplicationShell.h"
#include "shell/CommandLine.h"
#include "shell/ConsoleMode.h"
#include "shell/Extraction.h"
#include "shell/Integration.h"
#include "shell/QtDesktop.h"
#include "shell/ServiceActions.h"
#include "shell/ServiceBus.h"
#include "shell/TemporaryFolderLease.h"
#include "shell/Translations.h"
#include "shell/WaylandClipboard.h"
#include "support/IndexerStop.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QScreen>
#include <QStandardPaths>
#include <QTextStream>
#include <QTimer>

#include <cstdio>
#include <memory>

namespace tallyvox {

namespace {

using namespace std::chrono_literals;

constexpr char applicationId[] = "com.okaluna.Tallyvox";

void nameApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Okaluna Software"));
    QCoreApplication::setApplicationName(QStringLiteral("Tallyvox"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TALLYVOX_VERSION));
}

bool isSelection(ServiceSource source)
{
    return source == ServiceSource::Selection || source == ServiceSource::Clipboard;
}

// A console service reaches the clipboard only when it reads a selection or puts the
// spelled-out number there.
bool wantsClipboard(const CommandLine& commandLine)
{
    return !commandLine.serviceName.isEmpty() &&
           (isSelection(commandLine.serviceSource) ||
            ServiceModeForMessage(commandLine.serviceName) == ProcessMode::SpellOutNumber);
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

// The window systems to try, in Qt's own order, with offscreen last: Qt ends the process
// when no platform can be had, and a display that cannot be opened is to be reported here.
QByteArray platformsToTry()
{
    QByteArray platforms = qgetenv("QT_QPA_PLATFORM");
    if (platforms.isEmpty()) {
        if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
            platforms += "wayland;";
        }
        if (!qEnvironmentVariableIsEmpty("DISPLAY")) {
            platforms += "xcb;";
        }
    } else {
        platforms += ';';
    }
    return platforms + "offscreen";
}

// The application of console mode, and whether the display it wanted could be opened. A
// batch run has no use for a display; services get one where there is one, as the
// windowed application would.
std::pair<std::unique_ptr<QCoreApplication>, bool> consoleApplication(int& argc, char** argv,
                                                                      const CommandLine& line)
{
    if (line.serviceName.isEmpty() || !hasDisplay()) {
        return {std::make_unique<QCoreApplication>(argc, argv), true};
    }
    const QByteArray platforms = platformsToTry();
    qputenv("QT_QPA_PLATFORM", platforms);
    auto app = std::make_unique<QGuiApplication>(argc, argv);
    const bool opened =
        platforms.startsWith("offscreen") || QGuiApplication::platformName() != u"offscreen";
    return {std::move(app), opened};
}

int runConsole(int argc, char** argv, const CommandLine& commandLine)
{
    const auto [app, displayOpened] = consoleApplication(argc, argv, commandLine);
    nameApplication();
    installTranslations(*app, messageLanguages());
    QTextStream out(stdout);
    QTextStream err(stderr);
    // wl-clipboard needs no Qt connection to reach a Wayland session's selections.
    if (!displayOpened && wantsClipboard(commandLine) && !waylandClipboard::inCharge()) {
        const QString display = qEnvironmentVariable("DISPLAY");
        const QString shown = display.isEmpty() ? QString() : QStringLiteral(" ") + display;
        const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM").section(u';', 0, 0);
        if (isSelection(commandLine.serviceSource)) {
            err << QCoreApplication::translate(
                       "tallyvox::Startup",
                       "tallyvox: cannot open the display%1 (%2), so there is no selection to "
                       "read\n")
                       .arg(shown, platform);
            return 1;
        }
        err << QCoreApplication::translate(
                   "tallyvox::Startup",
                   "tallyvox: cannot open the display%1 (%2); the clipboard is left as it is\n")
                   .arg(shown, platform);
    }
    QFile input;
    input.open(stdin, QIODevice::ReadOnly);
    return runConsoleMode(commandLine, {out, err, input});
}

// Hands the command line's service to the running instance. A selection this process
// could not read (on Wayland, without the focus) is left for the instance to read.
bool forwardService(QDBusConnection& bus, const CommandLine& commandLine,
                    const QList<Pasteboard>& pasteboards)
{
    const SelectionSource source = commandLineSelection(commandLine);
    for (const Pasteboard& pasteboard : pasteboards) {
        const bool leaveToInstance = pasteboard.isEmpty() && isSelection(commandLine.serviceSource);
        if (!forwardServiceRequest(bus, commandLine.serviceName,
                                   leaveToInstance ? std::nullopt : std::optional(pasteboard),
                                   source)) {
            return false;
        }
    }
    return true;
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

int runWindowed(int argc, char** argv, const CommandLine& commandLine)
{
    QApplication app(argc, argv);
    nameApplication();
    installTranslations(app, messageLanguages());
    QGuiApplication::setDesktopFileName(QString::fromLatin1(applicationId));
    QApplication::setWindowIcon(QIcon::fromTheme(
        QString::fromLatin1(applicationId),
        QIcon(QStringLiteral(":/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg"))));
    // The main window is never closed, only hidden on the way out.
    QApplication::setQuitOnLastWindowClosed(false);
    installAccessibleComboBoxes();

    QtDesktop qtDesktop;
    Desktop* const desktop = &qtDesktop;
    const bool service = !commandLine.serviceName.isEmpty();
    QList<Pasteboard> requests;
    if (service) {
        QFile input;
        if (commandLine.serviceSource == ServiceSource::Stdin) {
            input.open(stdin, QIODevice::ReadOnly);
        }
        requests = commandLinePasteboards(commandLine, *desktop, input);
    }

    QDBusConnection bus = QDBusConnection::sessionBus();
    ApplicationBusObject busObject;
    if (claimSingleInstance(bus, busObject) == InstanceClaim::OtherInstanceRuns) {
        if (service ? forwardService(bus, commandLine, requests)
                    : forwardToRunningInstance(bus, commandLine.files)) {
            return 0;
        }
        std::fputs(QCoreApplication::translate("tallyvox::Startup",
                                               "tallyvox: the running instance did not answer\n")
                       .toLocal8Bit()
                       .constData(),
                   stderr);
        return 1;
    }

    PreferenceStore preferences;
    const TemporaryFolderLease temporary;
    IndexerStop indexerStop;
    const Extraction extraction(*desktop, preferences, temporary, &indexerStop);
    ApplicationShell shell(preferences, extraction.context());
    qtDesktop.setWindow(&shell.mainWindow());
    shell.batch().setConcurrency(filesAtOnce());
    QObject::connect(&shell, &ApplicationShell::eventLoopEndRequested, &app,
                     &QCoreApplication::quit);
    ShellDocumentHandler documents(shell);
    busObject.setDocumentHandler(&documents);
    ServiceActions actions({extraction.context(),
                            [&shell](std::chrono::milliseconds delay) {
                                QTimer::singleShot(delay, &shell,
                                                   &ApplicationShell::QuitWithFarewell);
                            }},
                           shell.jobs());
    busObject.setActionHandler(&actions);

    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect screenRect(QPoint(0, 0), screen ? screen->size() : QSize());
    const Status status = shell.start(screenRect);
    if (const std::optional<QString> refused = preferences.refusal()) {
        desktop->alert(*refused);
    }
    temporary.prepare(*desktop);
    // Files named at launch arrive like files from the file manager.
    if (service) {
        // Performed once the loop runs, as a request from the bus would be.
        for (const Pasteboard& pasteboard : requests) {
            const bool readLater = pasteboard.isEmpty() && isSelection(commandLine.serviceSource);
            actions.queueRequest(commandLine.serviceName,
                                 readLater ? std::nullopt : std::optional(pasteboard),
                                 commandLineSelection(commandLine));
        }
    } else if (!commandLine.files.isEmpty()) {
        shell.openDocuments(commandLine.files);
    }
    QApplication::exec();
    shell.shutdown();
    busObject.setDocumentHandler(nullptr);
    busObject.setActionHandler(nullptr);
    return status;
}

} // namespace

int runTallyvox(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        // File names are bytes, not always UTF-8: kept as they are.
        arguments.append(decodePath(argv[i]));
    }
    const CommandLine commandLine = parseCommandLine(arguments, QDir::currentPath());
    if (!commandLine.error.isEmpty() || commandLine.showHelp) {
        // Translations need an application; parsed again, the error is in the user's language.
        QCoreApplication app(argc, argv);
        installTranslations(app, messageLanguages());
        const CommandLine translated = parseCommandLine(arguments, QDir::currentPath());
        if (!translated.error.isEmpty()) {
            const QString text =
                QCoreApplication::translate("tallyvox::CommandLine",
                                            "tallyvox: %1\nTry 'tallyvox --help'.\n")
                    .arg(translated.error);
            std::fputs(text.toLocal8Bit().constData(), stderr);
            return 2;
        }
        std::fputs(commandLineHelp().toLocal8Bit().constData(), stdout);
        return 0;
    }
    if (commandLine.showVersion) {
        std::fputs(versionText().toLocal8Bit().constData(), stdout);
        return 0;
    }
    if (commandLine.installIntegration) {
        QCoreApplication app(argc, argv);
        installTranslations(app, messageLanguages());
        QTextStream out(stdout);
        QTextStream err(stderr);
        const QString dataHome =
            QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        return installIntegration(dataHome, out, err) ? 0 : 1;
    }
    if (commandLine.console) {
        return runConsole(argc, argv, commandLine);
    }
    return runWindowed(argc, argv, commandLine);
}

} // namespace tallyvox
