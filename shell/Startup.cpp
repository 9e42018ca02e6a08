#include "shell/Startup.h"
#include "support/FilePath.h"

#include "shell/AccessibleComboBox.h"
#include "shell/ApplicationBus.h"
#include "shell/CommandLine.h"
#include "shell/ConsoleMode.h"
#include "shell/Integration.h"
#include "shell/QtDesktop.h"
#include "shell/Translations.h"
#include "shell/WaylandClipboard.h"
#include "shell/WindowedMode.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QIcon>
#include <QScreen>
#include <QStandardPaths>
#include <QTextStream>

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

// The application object, and whether the display it wanted could be opened: a display
// that cannot be opened is reported here rather than by Qt, which ends the process. The
// window systems are tried in Qt's own order, offscreen last; the children (editors,
// indexers) inherit the environment as it was.
template <typename Application>
std::pair<std::unique_ptr<Application>, bool> applicationWithDisplay(int& argc, char** argv)
{
    const QByteArray given = qgetenv("QT_QPA_PLATFORM");
    const QByteArray platforms = platformsToTry();
    qputenv("QT_QPA_PLATFORM", platforms);
    auto app = std::make_unique<Application>(argc, argv);
    const bool opened =
        platforms.startsWith("offscreen") || QGuiApplication::platformName() != u"offscreen";
    if (given.isEmpty()) {
        qunsetenv("QT_QPA_PLATFORM");
    } else {
        qputenv("QT_QPA_PLATFORM", given);
    }
    return {std::move(app), opened};
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
    return applicationWithDisplay<QGuiApplication>(argc, argv);
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

int runWindowed(int argc, char** argv, const CommandLine& commandLine)
{
    const auto [app, opened] = applicationWithDisplay<QApplication>(argc, argv);
    // Without any display Qt is given offscreen alone, which always opens.
    const bool displayOpened = opened && hasDisplay();
    nameApplication();
    installTranslations(*app, messageLanguages());
    QGuiApplication::setDesktopFileName(QString::fromLatin1(applicationId));
    QApplication::setWindowIcon(QIcon::fromTheme(
        QString::fromLatin1(applicationId),
        QIcon(QStringLiteral(":/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg"))));
    // The main window is never closed, only hidden on the way out.
    QApplication::setQuitOnLastWindowClosed(false);
    installAccessibleComboBoxes();

    QtDesktop desktop;
    SessionBusLink bus;
    QTextStream err(stderr);
    QFile input;
    if (commandLine.serviceSource == ServiceSource::Stdin) {
        input.open(stdin, QIODevice::ReadOnly);
    }
    const QScreen* screen = QGuiApplication::primaryScreen();
    return runWindowedMode(
        commandLine, {.desktop = desktop,
                      .instance = bus,
                      .err = err,
                      .input = input,
                      .displayOpened = displayOpened,
                      .screen = QRect(QPoint(0, 0), screen ? screen->size() : QSize()),
                      .windowMade = [&desktop](QWidget& window) { desktop.setWindow(&window); },
                      .eventLoop = [](ApplicationShell&) { QApplication::exec(); }});
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
