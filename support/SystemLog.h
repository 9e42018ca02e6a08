#pragma once

#include <QString>

namespace tallyvox {

/// Writes one diagnostic line to standard error and to the system log.
void systemLog(const QString& line);

} // namespace tallyvox
