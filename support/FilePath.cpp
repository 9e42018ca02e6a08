#include "support/FilePath.h"

namespace tallyvox {

namespace {

constexpr char16_t escapeBase = 0xDC00;

// The length of the well-formed UTF-8 sequence at the start of bytes, or 0: no overlong
// forms, no surrogates, nothing past U+10FFFF.
qsizetype utf8SequenceLength(QByteArrayView bytes)
{
    const auto at = [&bytes](qsizetype i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = at(0);
    if (lead < 0x80) {
        return 1;
    }
    qsizetype length = 0;
    unsigned char low = 0x80;
    unsigned char high = 0xBF;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2;
    } else if (lead >= 0xE0 && lead <= 0xEF) {
        length = 3;
        low = lead == 0xE0 ? 0xA0 : 0x80;
        high = lead == 0xED ? 0x9F : 0xBF;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4;
        low = lead == 0xF0 ? 0x90 : 0x80;
        high = lead == 0xF4 ? 0x8F : 0xBF;
    } else {
        return 0;
    }
    if (bytes.size() < length || at(1) < low || at(1) > high) {
        return 0;
    }
    for (qsizetype i = 2; i < length; ++i) {
        if (at(i) < 0x80 || at(i) > 0xBF) {
            return 0;
        }
    }
    return length;
}

bool isEscapedByte(char16_t unit)
{
    return unit >= escapeBase + 0x80 && unit <= escapeBase + 0xFF;
}

} // namespace

QString decodePath(QByteArrayView bytes)
{
    QString path;
    path.reserve(bytes.size());
    qsizetype i = 0;
    while (i < bytes.size()) {
        const qsizetype length = utf8SequenceLength(bytes.sliced(i));
        if (length == 0) {
            path.append(QChar(char16_t(escapeBase + static_cast<unsigned char>(bytes[i]))));
            ++i;
        } else {
            path.append(QString::fromUtf8(bytes.sliced(i, length)));
            i += length;
        }
    }
    return path;
}

QByteArray encodePath(QStringView path)
{
    QByteArray bytes;
    bytes.reserve(path.size());
    qsizetype start = 0;
    for (qsizetype i = 0; i < path.size(); ++i) {
        const char16_t unit = path[i].unicode();
        // A low surrogate that ends a pair is text; a lone one in the range is a byte.
        const bool paired = i > 0 && path[i - 1].isHighSurrogate();
        if (isEscapedByte(unit) && !paired) {
            bytes.append(path.sliced(start, i - start).toUtf8());
            bytes.append(static_cast<char>(unit - escapeBase));
            start = i + 1;
        }
    }
    bytes.append(path.sliced(start).toUtf8());
    return bytes;
}

std::optional<QString> pathOfFileUrl(const QUrl& url)
{
    if (url.scheme().compare(QLatin1String("file"), Qt::CaseInsensitive) != 0) {
        return std::nullopt;
    }
    const QString host = url.host();
    if (!host.isEmpty() && host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) != 0) {
        return std::nullopt;
    }
    // The encoded form keeps percent-escapes of bytes that are not UTF-8.
    return decodePath(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1()));
}

QUrl fileUrlOfPath(const QString& path)
{
    // RFC 3986's unreserved characters and "/" stay as they are; every other byte is escaped.
    return QUrl::fromEncoded("file://" + encodePath(path).toPercentEncoding("/"), QUrl::StrictMode);
}

} // namespace tallyvox
