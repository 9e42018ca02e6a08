#include "shell/CommandLine.h"

#include <QDir>
#include <QUrl>

namespace tallyvox {

namespace {

CommandLine failure(const QString& message)
{
    CommandLine result;
    result.error = message;
    return result;
}

QString absolutePath(const QString& argument, const QString& workingDirectory)
{
    if (argument.startsWith(QLatin1String("file:")))
        return QUrl(argument).toLocalFile();
    // Not canonical: a symbolic link keeps its own name.
    return QDir::cleanPath(QDir(workingDirectory).absoluteFilePath(argument));
}

} // namespace

CommandLine parseCommandLine(const QStringList& arguments, const QString& workingDirectory)
{
    CommandLine result;
    bool optionsEnded = false;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (optionsEnded || !argument.startsWith(QLatin1Char('-')) ||
            argument == QLatin1String("-")) {
            result.files.append(absolutePath(argument, workingDirectory));
        } else if (argument == QLatin1String("--")) {
            optionsEnded = true;
        } else if (argument == QLatin1String("--console")) {
            result.console = true;
        } else if (argument == QLatin1String("--save-as") ||
                   argument.startsWith(QLatin1String("--save-as="))) {
            if (argument.contains(QLatin1Char('='))) {
                result.saveAsPath = argument.section(QLatin1Char('='), 1);
            } else if (i + 1 < arguments.size()) {
                result.saveAsPath = arguments.at(++i);
            } else {
                return failure(QStringLiteral("--save-as needs a path"));
            }
            result.saveAsPath = absolutePath(result.saveAsPath, workingDirectory);
        } else if (argument == QLatin1String("--help") || argument == QLatin1String("-h")) {
            result.showHelp = true;
        } else if (argument == QLatin1String("--version") || argument == QLatin1String("-v")) {
            result.showVersion = true;
        } else {
            return failure(QStringLiteral("unknown option %1").arg(argument));
        }
    }
    if (!result.saveAsPath.isEmpty() && !result.console)
        return failure(QStringLiteral("--save-as works with --console only"));
    return result;
}

QString commandLineHelp()
{
    return QStringLiteral(
        "Usage: tallyvox [FILE...]\n"
        "       tallyvox --console [--save-as PATH] [FILE...]\n"
        "\n"
        "Turns documents into word lists. Each FILE is processed as if dropped on the\n"
        "window; a running Tallyvox receives them instead of a second window opening.\n"
        "\n"
        "  --console        no window: alerts are printed as lines on standard output,\n"
        "                   and files are not opened but printed as \"open PATH\"\n"
        "  --save-as PATH   in console mode, the answer to any save panel (none: cancel)\n"
        "  -h, --help       show this help\n"
        "  -v, --version    show the version\n");
}

QString versionText()
{
    return QStringLiteral("Tallyvox %1\n").arg(QLatin1String(TALLYVOX_VERSION));
}

} // namespace tallyvox
