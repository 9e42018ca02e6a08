#pragma once

#include <string>

namespace tallyvox {

/// True when path is a real folder (not a link to one) that this user owns and nobody
/// else may enter (no group or other permission bits).
bool isPrivateFolder(const std::string& path);

/// Where the application keeps its temporary files for this run.
struct TemporaryFolderChoice {
    /// Empty when no private folder could be had.
    std::string path;
    /// Made with mkdtemp for this process alone; the application removes it at exit.
    bool madeForThisProcess = false;
    /// What was wrong with the usual place, in words for the user; empty when nothing was.
    std::string problem;
};

/// $TMPDIR when it is a private folder; when it is shared or belongs to anyone else, a
/// new private folder beneath it. Without $TMPDIR: $XDG_RUNTIME_DIR/tallyvox, else
/// /tmp/tallyvox-<uid>, made with mode 0700; when that is not ours, a new private
/// folder beside it and a problem to report. Plain C++ so the indexers can use it too.
TemporaryFolderChoice chooseTemporaryFolder();

/// The indexers' folder: $TMPDIR, else the usual per-user place, only when it is private
/// (the application hands each run a private folder of its own). Empty otherwise.
std::string temporaryFolder();

/// The folder temporaryFolder() looks at, private or not: $TMPDIR, else the usual place.
std::string temporaryFolderCandidate();

} // namespace tallyvox
