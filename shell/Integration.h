#pragma once

#include <QString>

class QTextStream;

namespace tallyvox {

/// Installs the file-manager context-menu entries for the four services that take files,
/// for this user below dataHome ($XDG_DATA_HOME): Dolphin's service menu in
/// kio/servicemenus, Nautilus scripts in nautilus/scripts, Nemo actions in nemo/actions.
/// Prints each file written to out and each failure to err; false after a failure.
bool installIntegration(const QString& dataHome, QTextStream& out, QTextStream& err);

} // namespace tallyvox
