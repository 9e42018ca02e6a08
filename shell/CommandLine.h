#pragma once

#include <QString>
#include <QStringList>

namespace tallyvox {

/// What the command line asks for.
struct CommandLine {
    bool console = false;
    /// --save-as: the save panel's answer in console mode; empty means cancel.
    QString saveAsPath;
    /// The files, as absolute paths (file: URIs are accepted too).
    QStringList files;
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
