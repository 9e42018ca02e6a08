#pragma once

#include <QString>
#include <QStringList>

namespace tallyvox {

/// Where the pasteboard of a --service request comes from.
enum class ServiceSource { None, Files, Text, Selection, Clipboard, Stdin };

/// What the command line asks for.
struct CommandLine {
    bool console = false;
    /// --save-as: the save panel's answer in console mode; empty means cancel.
    QString saveAsPath;
    /// The files, as absolute paths (file: URIs are accepted too).
    QStringList files;
    /// --service NAME: the service's message name; empty when no service is asked for.
    /// With ServiceSource::Files, the files are in files, one request each.
    QString serviceName;
    ServiceSource serviceSource = ServiceSource::None;
    /// --text TEXT
    QString serviceText;
    /// --install-integration: the file-manager menu entries for this user.
    bool installIntegration = false;
    bool showHelp = false;
    bool showVersion = false;
    /// Set when the arguments cannot be understood; the other fields are then unset.
    QString error;
};

/// Parses the arguments after the program name; relative paths are taken against
/// workingDirectory.
CommandLine parseCommandLine(const QStringList& arguments, const QString& workingDirectory);

/// The text of --help.
QString commandLineHelp();

/// The text of --version.
QString versionText();

} // namespace tallyvox
