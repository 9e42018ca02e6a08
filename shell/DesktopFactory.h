#pragma once

#include "support/Desktop.h"

#include <memory>

class QTextStream;

namespace tallyvox {

/// Which desktop the process talks to.
struct DesktopChoice {
    enum class Kind { Windowed, Console } kind = Kind::Windowed;
    /// Console mode: where the lines go, and the save panel's answer (empty: cancel).
    QTextStream* out = nullptr;
    QTextStream* err = nullptr;
    QString saveAsPath;
};

/// The one place that picks the desktop implementation.
std::unique_ptr<Desktop> makeDesktop(const DesktopChoice& choice);

} // namespace tallyvox
