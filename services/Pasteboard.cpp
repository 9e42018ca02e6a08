#include "services/Pasteboard.h"
#include "support/FilePath.h"

#include <QStringDecoder>
#include <QUrl>

#include <array>
#include <cstring>

namespace tallyvox {

namespace {

// A MIME type as compared: case and blanks do not matter.
QString normalisedType(const QString& type)
{
    QString result = type.toLower();
    result.remove(QLatin1Char(' '));
    return result;
}

// Every name a flavor goes by, its MIME type first.
QStringList namesOf(const char* flavor)
{
    const QString name = QString::fromLatin1(flavor);
    if (name == QLatin1String(flavors::utf8PlainText)) {
        return {name, QStringLiteral("utf8_string")};
    }
    if (name == QLatin1String(flavors::text)) {
        return {name, QStringLiteral("string"), QStringLiteral("text")};
    }
    return {name};
}

std::optional<QString> strictUtf8(const QByteArray& bytes)
{
    // A byte-order mark is a character like any other here.
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder.decode(bytes);
    if (decoder.hasError()) {
        return std::nullopt;
    }
    return text;
}

std::optional<QString> hostOrderUtf16(const QByteArray& bytes)
{
    if (bytes.size() % 2 != 0) {
        return std::nullopt;
    }
    QString text(bytes.size() / 2, Qt::Uninitialized);
    std::memcpy(text.data(), bytes.constData(), static_cast<size_t>(bytes.size()));
    return text;
}

} // namespace

std::optional<QByteArray> copyItemFlavorData(const Pasteboard& pasteboard, qsizetype index,
                                             const char* flavor)
{
    if (index < 1 || index > pasteboard.size()) {
        return std::nullopt;
    }
    const QStringList names = namesOf(flavor);
    for (const auto& [type, bytes] : pasteboard.at(index - 1)) {
        if (names.contains(normalisedType(type))) {
            return bytes;
        }
    }
    return std::nullopt;
}

bool ReadFileURLFromPasteboard(const Pasteboard& pasteboard, std::optional<FileRef>& outRef)
{
    std::optional<QByteArray> data;
    for (qsizetype index = 1; index <= pasteboard.size() && !data; ++index) {
        data = copyItemFlavorData(pasteboard, index, flavors::fileUrl);
    }
    if (!data || data->isEmpty()) {
        return false;
    }
    // A uri-list line ends in CR LF, which is not part of the URL.
    const QUrl url(QString::fromUtf8(data->trimmed()), QUrl::StrictMode);
    const std::optional<QString> path = url.isValid() ? pathOfFileUrl(url) : std::nullopt;
    if (!path) {
        return false;
    }
    outRef = FileRef::fromPath(*path);
    return outRef.has_value();
}

std::optional<QString> ReadTextFromPasteboard(const Pasteboard& pasteboard)
{
    static constexpr std::array textFlavors{flavors::utf8PlainText, flavors::utf16ExternalPlainText,
                                            flavors::utf16PlainText, flavors::text};
    std::optional<QByteArray> data;
    for (qsizetype index = 1; index <= pasteboard.size() && !data; ++index) {
        for (const char* flavor : textFlavors) {
            if ((data = copyItemFlavorData(pasteboard, index, flavor))) {
                break;
            }
        }
    }
    if (!data || data->isEmpty()) {
        return std::nullopt;
    }
    // UTF-8 first whatever the flavor said: ASCII in UTF-16 is valid UTF-8, NULs and all.
    if (std::optional<QString> text = strictUtf8(*data)) {
        return text;
    }
    return hostOrderUtf16(*data);
}

Status PutTextOnClipboard(Desktop& desktop, const QString& text)
{
    desktop.setClipboardText(text);
    return noErr;
}

Pasteboard pasteboardWithText(const QString& text)
{
    return {PasteboardItem{{QString::fromLatin1(flavors::utf8PlainText), text.toUtf8()}}};
}

Pasteboard pasteboardWithBytes(const QByteArray& bytes)
{
    return {PasteboardItem{{QString::fromLatin1(flavors::text), bytes}}};
}

Pasteboard pasteboardWithFile(const QString& path)
{
    return {
        PasteboardItem{{QString::fromLatin1(flavors::fileUrl), fileUrlOfPath(path).toEncoded()}}};
}

} // namespace tallyvox
