#include "shell/WaylandClipboard.h"

#include "shell/SelectionItems.h"

#include <QMimeData>
#include <QProcess>
#include <QStandardPaths>

#include <optional>

namespace tallyvox::waylandClipboard {

namespace {

// Where the compositor offers no data-control, wl-paste waits for a focus that may never
// come: give up rather than hang the service.
constexpr int toolMilliseconds = 3000;

QString tool(const char* name)
{
    return QStandardPaths::findExecutable(QString::fromLatin1(name));
}

// The tool's standard output, or nothing when it failed (wl-paste also fails on an empty
// selection).
std::optional<QByteArray> run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(toolMilliseconds)) {
        process.kill();
        process.waitForFinished();
        return std::nullopt;
    }
    if (process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        return std::nullopt;
    }
    return process.readAllStandardOutput();
}

// The services read text and file lists; images and the like would only cost a transfer.
bool isTextual(const QString& type)
{
    static const QStringList x11Text{QStringLiteral("UTF8_STRING"), QStringLiteral("STRING"),
                                     QStringLiteral("TEXT"),
                                     QStringLiteral("x-special/gnome-copied-files")};
    return type.startsWith(QLatin1String("text/"), Qt::CaseInsensitive) ||
           x11Text.contains(type, Qt::CaseInsensitive);
}

} // namespace

bool inCharge()
{
    return !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") && !tool("wl-paste").isEmpty() &&
           !tool("wl-copy").isEmpty();
}

QList<PasteboardItem> read(SelectionSource source)
{
    const QString paste = tool("wl-paste");
    const QStringList selection = source == SelectionSource::Primary
                                      ? QStringList{QStringLiteral("--primary")}
                                      : QStringList();
    const std::optional<QByteArray> types =
        run(paste, selection + QStringList{QStringLiteral("--list-types")});
    if (!types) {
        return {};
    }
    QMimeData data;
    for (const QByteArray& line : types->split('\n')) {
        const QString type = QString::fromUtf8(line.trimmed());
        if (type.isEmpty() || !isTextual(type)) {
            continue;
        }
        if (const std::optional<QByteArray> bytes =
                run(paste, selection + QStringList{QStringLiteral("--no-newline"),
                                                   QStringLiteral("--type"), type})) {
            data.setData(type, *bytes);
        }
    }
    return itemsFromMimeData(data);
}

bool copyText(const QString& text)
{
    QProcess process;
    // wl-copy leaves a process behind that serves the text; it must not hold on to the
    // output of whoever started us.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    // The type is given, so wl-copy does not guess it from the content.
    process.start(tool("wl-copy"),
                  {QStringLiteral("--type"), QStringLiteral("text/plain;charset=utf-8")});
    if (!process.waitForStarted(toolMilliseconds)) {
        return false;
    }
    process.write(text.toUtf8());
    process.closeWriteChannel();
    return process.waitForFinished(toolMilliseconds) &&
           process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace tallyvox::waylandClipboard
