#pragma once

#include "services/Pasteboard.h"
#include "services/ProcessFile.h"
#include "support/Status.h"
#include "support/Translation.h"
#include "words/WordContext.h"

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace tallyvox {

class PreferenceStore;

/// One service request as it arrives: either parameter may be missing.
struct ServiceRequest {
    std::optional<QString> messageName;
    std::optional<Pasteboard> pasteboard;
};

/// What the services need from the application; the caller owns all of it.
struct ServiceContext {
    /// Word extraction's context; its desktop and preferences serve the services too.
    /// Held by value: a reference here outlived temporaries.
    WordContext words;
    /// Arms a one-shot timer whose action is the shell's QuitWithFarewell.
    std::function<void(std::chrono::milliseconds delay)> armQuitTimer;
};

/// The mode a service's message name stands for, matched without regard to case;
/// ProcessMode{0} for a name that is not a service.
ProcessMode ServiceModeForMessage(const QString& messageName);

/// The alert after a count or a list of a file that neither indexer could read (the count
/// itself, 0, is shown as well).
inline constexpr char16_t unreadableFileMessage[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::ServiceDispatcher", "Tallyvox could not read \"%1\".");

/// One service request being performed. start() raises the application and begins what
/// the request needs: a file handed over (as a file URL or as text naming one) goes to
/// ProcessFile, text through a temporary file when it is to be indexed. commit() shows
/// the result (the file's operation, or the text operations: a count, a spelled-out
/// number, a decoded or graphic file saved) and then arms the quit timer when
/// "QuitWhenDone" is set. The commit status is always eventNotHandledErr, which
/// tells the caller to go on as for any unhandled event.
class ServiceJob final : public FileJob {
    Q_OBJECT
public:
    ServiceJob(ServiceContext context, ServiceRequest request);
    ~ServiceJob() override;
    ServiceJob(const ServiceJob&) = delete;
    ServiceJob& operator=(const ServiceJob&) = delete;

    void start() override;
    void stop() override;
    Status commit() override;
    bool failed() const override { return m_file && m_file->failed(); }

private:
    void perform();

    ServiceContext m_context;
    ServiceRequest m_request;
    ProcessMode m_mode = ProcessMode{0};
    /// The file operation, when the request names or becomes a file.
    std::unique_ptr<FileJob> m_file;
    /// The text for a text operation performed at commit.
    std::optional<QString> m_text;
    /// The name of the file handed to ProcessFile.
    QString m_fileName;
};

/// Performs a service request: a started job, to commit once it is ready.
std::unique_ptr<ServiceJob> HandleServicePerform(const ServiceContext& context,
                                                 const ServiceRequest& request);

} // namespace tallyvox
