#include "support/SystemLog.h"

#include <cstdio>
#include <syslog.h>

namespace tallyvox {

void systemLog(const QString& line)
{
    const QByteArray bytes = line.toUtf8();
    std::fprintf(stderr, "Tallyvox: %s\n", bytes.constData());
    std::fflush(stderr);
    ::syslog(LOG_USER | LOG_NOTICE, "%s", bytes.constData());
}

} // namespace tallyvox
