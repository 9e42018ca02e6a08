#include "services/DecodeAndSave.h"

#include "services/Base64.h"
#include "services/StringExtensions.h"
#include "services/naming/NameFileByContentType.h"
#include "support/Desktop.h"

#include <QFile>
#include <QStringEncoder>

namespace tallyvox {

namespace {

bool writeData(const QString& path, const QByteArray& data)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(data) == data.size();
}

// A string with an unpaired surrogate has no UTF-8 form.
std::optional<QByteArray> utf8Data(const QString& text)
{
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    QByteArray data = encoder.encode(text);
    if (encoder.hasError()) {
        return std::nullopt;
    }
    return data;
}

} // namespace

void DecodeAndSaveBase64(Desktop& desktop, const QString& text)
{
    const std::optional<QByteArray> data = dataFromBase64String(text);
    if (!data) {
        desktop.alert(QStringLiteral("The text could not be base64 decoded"));
        return;
    }
    const QString path = desktop.chooseSavePath(QStringLiteral("DecodedBase64"));
    if (path.isEmpty()) {
        return;
    }
    if (!writeData(path, *data)) {
        return;
    }
    const std::optional<FileRef> ref = getFSRef(path);
    if (!ref) {
        return;
    }
    std::optional<FileRef> renamed;
    if (NameFileByContentType(desktop, *ref, renamed)) {
        if (const std::optional<QString> newPath = stringWithFSRef(&*renamed)) {
            desktop.openFile(*newPath);
        }
    } else {
        desktop.openFile(path);
    }
}

void SaveGraphicData(Desktop& desktop, const QString& text)
{
    const std::optional<QByteArray> data = utf8Data(text);
    if (!data) {
        desktop.alert(QStringLiteral("The text could not be decoded as UTF8"));
        return;
    }
    const QString path = desktop.chooseSavePath(QStringLiteral("Graphic"));
    if (path.isEmpty()) {
        return;
    }
    if (writeData(path, *data)) {
        if (const std::optional<FileRef> ref = getFSRef(path)) {
            std::optional<FileRef> renamed;
            NameFileByContentType(desktop, *ref, renamed);
        }
    }
    // Deliberately the path as chosen, even after a failed write or a rename.
    desktop.openFile(path);
}

} // namespace tallyvox
