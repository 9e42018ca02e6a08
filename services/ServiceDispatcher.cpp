#include "services/ServiceDispatcher.h"
#include "support/FilePath.h"

#include "prefs/PreferenceStore.h"
#include "services/DecodeAndSave.h"
#include "services/SpellOutNumber.h"
#include "services/TemporaryFile.h"
#include "support/Desktop.h"

#include <QUrl>

#include <array>

namespace tallyvox {

namespace {

using namespace std::chrono_literals;

constexpr auto quitDelay = 1000ms;

struct ServiceName {
    const char* messageName;
    ProcessMode mode;
};

// Tried in this order.
constexpr std::array serviceNames{
    ServiceName{"tallyvox", ProcessMode::ExtractWords},
    ServiceName{"charCount", ProcessMode::CharCount},
    ServiceName{"wordCount", ProcessMode::WordCount},
    ServiceName{"decodeBase64", ProcessMode::DecodeBase64},
    ServiceName{"spellOutNumber", ProcessMode::SpellOutNumber},
    ServiceName{"saveGraphicData", ProcessMode::SaveGraphicData},
};

// Text that is a file URL, or an absolute path written as a URL would be, naming an
// existing item. Anything a strict URL parser refuses (blanks, line breaks) is not.
std::optional<FileRef> fileNamedByText(const QString& text)
{
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid()) {
        return std::nullopt;
    }
    if (const std::optional<QString> path = pathOfFileUrl(url)) {
        return FileRef::fromPath(*path);
    }
    if (url.scheme().isEmpty() && url.host().isEmpty() && url.path().startsWith(QLatin1Char('/'))) {
        return FileRef::fromPath(
            decodePath(QByteArray::fromPercentEncoding(url.path(QUrl::FullyEncoded).toLatin1())));
    }
    return std::nullopt;
}

void performOnText(const WordContext& words, const QString& text, ProcessMode mode)
{
    if (const std::optional<FileRef> file = fileNamedByText(text)) {
        ProcessFile(words, *file, mode);
        return;
    }
    switch (mode) {
    case ProcessMode::CharCount:
        // The selection's own UTF-16 length, unlike a file's count of word characters.
        words.desktop.alert(QStringLiteral("Character count: %1").arg(text.size()));
        break;
    case ProcessMode::DecodeBase64:
        DecodeAndSaveBase64(words.desktop, text);
        break;
    case ProcessMode::SpellOutNumber:
        SpellOutNumber(words.desktop, text);
        break;
    case ProcessMode::SaveGraphicData:
        SaveGraphicData(words.desktop, text);
        break;
    default: {
        // Every other value, unknown names included, reuses the file pipeline.
        std::optional<FileRef> file;
        if (WriteTextToTemporaryFile(words.temporaryFolder, text, file)) {
            ProcessFile(words, *file, mode);
        }
        break;
    }
    }
}

void perform(const WordContext& words, const ServiceRequest& request)
{
    if (!request.messageName) {
        return;
    }
    const ProcessMode mode = ServiceModeForMessage(*request.messageName);
    if (!request.pasteboard) {
        return;
    }
    std::optional<FileRef> file;
    if (ReadFileURLFromPasteboard(*request.pasteboard, file)) {
        // Whatever the mode: ProcessFile ignores the text-only ones.
        ProcessFile(words, *file, mode);
        return;
    }
    if (const std::optional<QString> text = ReadTextFromPasteboard(*request.pasteboard)) {
        performOnText(words, *text, mode);
    }
}

} // namespace

ProcessMode ServiceModeForMessage(const QString& messageName)
{
    for (const ServiceName& service : serviceNames) {
        if (messageName.compare(QLatin1String(service.messageName), Qt::CaseInsensitive) == 0) {
            return service.mode;
        }
    }
    return ProcessMode{0};
}

Status HandleServicePerform(const ServiceContext& context, const ServiceRequest& request)
{
    // First, for every request, before anything is looked at.
    context.words.desktop.raiseApplication();
    perform(context.words, request);
    if (context.words.preferences.GetQuitWhenDone() && context.armQuitTimer) {
        context.armQuitTimer(quitDelay);
    }
    return eventNotHandledErr;
}

} // namespace tallyvox
