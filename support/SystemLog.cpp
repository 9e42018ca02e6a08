#include "support/SystemLog.h"

#include <algorithm>
#include <cstdio>
#include <syslog.h>

namespace tallyvox {

QString oneLine(const QString& text)
{
    const auto isControl = [](QChar c) {
        return c < u' ' || (c >= u'\x7f' && c <= u'\x9f') || c == u'\u2028' || c == u'\u2029';
    };
    if (!text.startsWith(u"$'") && std::none_of(text.begin(), text.end(), isControl)) {
        return text;
    }
    QString quoted = QStringLiteral("$'");
    for (const QChar c : text) {
        if (c == u'\\' || c == u'\'') {
            quoted += u'\\';
            quoted += c;
        } else if (c == u'\n') {
            quoted += u"\\n";
        } else if (c == u'\r') {
            quoted += u"\\r";
        } else if (c == u'\t') {
            quoted += u"\\t";
        } else if (c <= u'\x7f' && isControl(c)) {
            quoted += QStringLiteral("\\x%1").arg(c.unicode(), 2, 16, QLatin1Char('0'));
        } else if (isControl(c)) {
            quoted += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0'));
        } else {
            quoted += c;
        }
    }
    return quoted + u'\'';
}

void systemLog(const QString& line)
{
    const QByteArray bytes = oneLine(line).toUtf8();
    std::fprintf(stderr, "Tallyvox: %s\n", bytes.constData());
    std::fflush(stderr);
    ::syslog(LOG_USER | LOG_NOTICE, "%s", bytes.constData());
}

} // namespace tallyvox
