#include "shell/Startup.h"

#include "prefs/PreferenceStore.h"
#include "shell/ApplicationBus.h"
#include "shell/ApplicationShell.h"
#include "shell/BatchRunner.h"
#include "shell/CommandLine.h"
#include "shell/ConsoleView.h"
#include "shell/DesktopFactory.h"
#include "support/TemporaryFolder.h"
#include "words/ProcessFile.h"
#include "words/WordContext.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QScreen>
#include <QTextStream>

#include <cstdio>
#include <memory>

namespace tallyvox {

namespace {

constexpr char applicationId[] = "com.okaluna.Tallyvox";

void nameApplication()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Okaluna Software"));
    QCoreApplication::setApplicationName(QStringLiteral("Tallyvox"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TALLYVOX_VERSION));
}

WordContext wordContext(Desktop& desktop, const PreferenceStore& preferences)
{
    // The batch run only extracts words; decoding belongs to the services.
    return WordContext{desktop,
                       preferences,
                       defaultIndexerDirectory(),
                       QString::fromStdString(temporaryFolder()),
                       {}};
}

FileProcessor extractWords(const WordContext& context)
{
    return
        [&context](const FileRef& file) { ProcessFile(context, file, ProcessMode::ExtractWords); };
}

// Console mode wants the clipboard only where there is a display to hold it.
bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") ||
           !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
           !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

int runConsole(int argc, char** argv, const CommandLine& commandLine)
{
    std::unique_ptr<QCoreApplication> app = hasDisplay()
                                                ? std::make_unique<QGuiApplication>(argc, argv)
                                                : std::make_unique<QCoreApplication>(argc, argv);
    nameApplication();
    QTextStream out(stdout);
    QTextStream err(stderr);
    const std::unique_ptr<Desktop> desktop =
        makeDesktop({DesktopChoice::Kind::Console, &out, &err, commandLine.saveAsPath});
    PreferenceStore preferences;
    const WordContext context = wordContext(*desktop, preferences);
    ConsoleView view(*desktop);
    BatchRunner batch(view, *desktop, preferences, extractWords(context));
    // No window to wait for: the run's end is the end of the process.
    QObject::connect(&batch, &BatchRunner::runEnded, app.get(), &QCoreApplication::quit);
    batch.queueDocuments(commandLine.files);
    app->exec();
    return view.errorShown() ? 1 : 0;
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
    QGuiApplication::setDesktopFileName(QString::fromLatin1(applicationId));
    QApplication::setWindowIcon(QIcon::fromTheme(
        QString::fromLatin1(applicationId),
        QIcon(QStringLiteral(":/icons/hicolor/scalable/apps/com.okaluna.Tallyvox.svg"))));
    // The main window is never closed, only hidden on the way out.
    QApplication::setQuitOnLastWindowClosed(false);

    QDBusConnection bus = QDBusConnection::sessionBus();
    ApplicationBusObject busObject;
    if (claimSingleInstance(bus, busObject) == InstanceClaim::OtherInstanceRuns) {
        if (forwardToRunningInstance(bus, commandLine.files))
            return 0;
        std::fputs("tallyvox: the running instance did not answer\n", stderr);
        return 1;
    }

    const std::unique_ptr<Desktop> desktop = makeDesktop({});
    PreferenceStore preferences;
    const WordContext context = wordContext(*desktop, preferences);
    ApplicationShell shell(*desktop, preferences, extractWords(context));
    QObject::connect(&shell, &ApplicationShell::eventLoopEndRequested, &app,
                     &QCoreApplication::quit);
    ShellDocumentHandler documents(shell);
    busObject.setDocumentHandler(&documents);

    const QScreen* screen = QGuiApplication::primaryScreen();
    const QRect screenRect(QPoint(0, 0), screen ? screen->size() : QSize());
    const Status status = shell.start(screenRect);
    // Files named at launch arrive like files from the file manager.
    if (!commandLine.files.isEmpty())
        shell.openDocuments(commandLine.files);
    QApplication::exec();
    shell.shutdown();
    busObject.setDocumentHandler(nullptr);
    return status;
}

} // namespace

int runTallyvox(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    const CommandLine commandLine = parseCommandLine(arguments, QDir::currentPath());
    if (!commandLine.error.isEmpty()) {
        std::fprintf(stderr, "tallyvox: %s\nTry 'tallyvox --help'.\n",
                     commandLine.error.toLocal8Bit().constData());
        return 2;
    }
    if (commandLine.showHelp) {
        std::fputs(commandLineHelp().toLocal8Bit().constData(), stdout);
        return 0;
    }
    if (commandLine.showVersion) {
        std::fputs(versionText().toLocal8Bit().constData(), stdout);
        return 0;
    }
    if (commandLine.console)
        return runConsole(argc, argv, commandLine);
    return runWindowed(argc, argv, commandLine);
}

} // namespace tallyvox
