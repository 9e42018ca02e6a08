#pragma once

#include <string>

namespace tallyvox {

/// The per-user temporary folder shared by the application and its indexers:
/// $TMPDIR when set, else $XDG_RUNTIME_DIR/tallyvox, else /tmp/tallyvox-<uid>,
/// the last two created with mode 0700 and refused when another user owns them.
/// Empty when no usable folder can be had. Plain C++ so the indexers can use it too.
std::string temporaryFolder();

} // namespace tallyvox
