#pragma once

#include <QString>

namespace tallyvox {

/// A text on one line whatever it holds: unchanged when it has no control character (nor a
/// line or paragraph separator) and does not begin with $', otherwise quoted the way the
/// shell reads $'...', with \\, \', \n, \r, \t, \xHH and \uHHHH. So a file name holding a line
/// break can never pass for a line of its own.
QString oneLine(const QString& text);

/// Writes one diagnostic line (oneLine) to standard error and to the system log.
void systemLog(const QString& line);

} // namespace tallyvox
