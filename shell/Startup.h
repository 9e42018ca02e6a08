#pragma once

namespace tallyvox {

/// The whole life of the process: command line, single instance, start-up, event
/// loop, shutdown. Returns the process's exit status.
int runTallyvox(int argc, char** argv);

} // namespace tallyvox
