#include "services/ServiceDispatcher.h"
#include "support/FilePath.h"

#include "prefs/PreferenceStore.h"
#include "services/DecodeAndSave.h"
#include "services/SpellOutNumber.h"
#include "services/TemporaryFile.h"
#include "support/Desktop.h"

#include <QCoreApplication>
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

ServiceJob::ServiceJob(ServiceContext context, ServiceRequest request)
    : m_context(std::move(context)), m_request(std::move(request))
{}

ServiceJob::~ServiceJob() = default;

void ServiceJob::start()
{
    // First, for every request, before anything is looked at.
    m_context.words.desktop.raiseApplication();
    perform();
    if (!m_file) {
        becomeReady();
        return;
    }
    connect(m_file.get(), &FileJob::progressed, this, &FileJob::progressed);
    connect(m_file.get(), &FileJob::ready, this, &ServiceJob::becomeReady);
    m_file->start();
}

// What the request asks for: a file operation begun now, or text kept for the commit.
void ServiceJob::perform()
{
    if (!m_request.messageName || !m_request.pasteboard) {
        return;
    }
    const WordContext& words = m_context.words;
    m_mode = ServiceModeForMessage(*m_request.messageName);
    std::optional<FileRef> file;
    if (ReadFileURLFromPasteboard(*m_request.pasteboard, file)) {
        // Whatever the mode: ProcessFile ignores the text-only ones.
        m_file = ProcessFile(words, *file, m_mode);
        m_fileName = file->name();
        return;
    }
    const std::optional<QString> text = ReadTextFromPasteboard(*m_request.pasteboard);
    if (!text) {
        return;
    }
    if (const std::optional<FileRef> named = fileNamedByText(*text)) {
        m_file = ProcessFile(words, *named, m_mode);
        m_fileName = named->name();
        return;
    }
    switch (m_mode) {
    case ProcessMode::CharCount:
    case ProcessMode::DecodeBase64:
    case ProcessMode::SpellOutNumber:
    case ProcessMode::SaveGraphicData:
        m_text = text;
        break;
    default: {
        // Every other value, unknown names included, reuses the file pipeline.
        std::optional<FileRef> copy;
        if (WriteTextToTemporaryFile(words.temporaryFolder, *text, copy)) {
            m_file = ProcessFile(words, *copy, m_mode);
            m_fileName = copy->name();
        }
        break;
    }
    }
}

void ServiceJob::stop()
{
    if (m_file) {
        m_file->stop();
    }
}

Status ServiceJob::commit()
{
    Desktop& desktop = m_context.words.desktop;
    if (m_file) {
        m_file->commit();
    } else if (m_text) {
        switch (m_mode) {
        case ProcessMode::CharCount:
            // The selection's own UTF-16 length, unlike a file's count of word characters.
            desktop.alert(
                QCoreApplication::translate("tallyvox::ServiceDispatcher", "Character count: %1")
                    .arg(m_text->size()));
            break;
        case ProcessMode::DecodeBase64:
            DecodeAndSaveBase64(desktop, *m_text);
            break;
        case ProcessMode::SpellOutNumber:
            SpellOutNumber(desktop, *m_text);
            break;
        case ProcessMode::SaveGraphicData:
            SaveGraphicData(desktop, *m_text);
            break;
        default:
            break;
        }
    }
    if (failed()) {
        desktop.failureAlert(
            translated("tallyvox::ServiceDispatcher", unreadableFileMessage).arg(m_fileName));
    }
    if (m_context.words.preferences.GetQuitWhenDone() && m_context.armQuitTimer) {
        m_context.armQuitTimer(quitDelay);
    }
    return eventNotHandledErr;
}

std::unique_ptr<ServiceJob> HandleServicePerform(const ServiceContext& context,
                                                 const ServiceRequest& request)
{
    auto job = std::make_unique<ServiceJob>(context, request);
    job->start();
    return job;
}

} // namespace tallyvox
