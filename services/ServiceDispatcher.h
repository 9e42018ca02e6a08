#pragma once

#include "services/Pasteboard.h"
#include "services/ProcessFile.h"
#include "support/Status.h"
#include "words/WordContext.h"

#include <QString>

#include <chrono>
#include <functional>
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

/// Performs a service request: a file handed over (as a file URL or as text naming one)
/// goes to ProcessFile, text to the text operations or through a temporary file. Arms
/// the quit timer when "QuitWhenDone" is set. Always eventNotHandledErr, by design.
Status HandleServicePerform(const ServiceContext& context, const ServiceRequest& request);

} // namespace tallyvox
