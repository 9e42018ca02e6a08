#include "indexer/Serve.h"

#include "indexer/Progress.h"
#include "support/IndexerContract.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tallyvox::indexer {

namespace {

// One write, so the line never mixes with a child's output, which shares the descriptor.
void writeOut(const std::string& text)
{
    std::size_t written = 0;
    while (written < text.size()) {
        const ssize_t n = ::write(STDOUT_FILENO, text.data() + written, text.size() - written);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            return;
        }
        written += static_cast<std::size_t>(n);
    }
}

// The next NUL-ended path of standard input, or false at its end.
bool nextPath(std::string& pending, std::string& path)
{
    for (;;) {
        const std::size_t end = pending.find('\0');
        if (end != std::string::npos) {
            path.assign(pending, 0, end);
            pending.erase(0, end + 1);
            return true;
        }
        char buffer[4096];
        const ssize_t n = ::read(STDIN_FILENO, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            return false;
        }
        pending.append(buffer, static_cast<std::size_t>(n));
    }
}

// The table descriptor starts empty for every file, so a child that ends before writing
// cannot pass off the previous file's table as its own.
void emptyTable()
{
    const char* descriptor = std::getenv(resultDescriptorVariable);
    if (descriptor != nullptr) {
        [[maybe_unused]] const int cut = ::ftruncate(std::atoi(descriptor), 0);
    }
}

[[noreturn]] void indexInChild(pid_t server, const char* program, std::string& path,
                               const std::vector<std::string>& options, IndexOne indexOne)
{
    // The child goes with the server, which goes with the application.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != server) {
        ::_exit(1);
    }
    // The paths on standard input are the server's, not the child's.
    const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (nothing >= 0) {
        ::dup2(nothing, STDIN_FILENO);
        ::close(nothing);
    }
    progress::restart();
    std::vector<std::string> words = options;
    std::vector<char*> argv{const_cast<char*>(program), path.data()};
    for (std::string& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);
    const int status = indexOne(static_cast<int>(argv.size() - 1), argv.data());
    std::fflush(nullptr);
    // The server's exit handlers are not the child's to run.
    ::_exit(status);
}

} // namespace

int serveFiles(const char* program, const std::vector<std::string>& options, IndexOne indexOne)
{
    std::string pending;
    std::string path;
    const std::string_view marker(servedFileMarker, sizeof servedFileMarker - 1);
    const pid_t server = ::getpid();
    while (nextPath(pending, path)) {
        emptyTable();
        std::fflush(nullptr);
        const pid_t child = ::fork();
        if (child < 0) {
            std::fprintf(stderr, "%s: no process for \"%s\"\n", program, path.c_str());
            return 1;
        }
        if (child == 0) {
            indexInChild(server, program, path, options, indexOne);
        }
        int status = 0;
        pid_t waited = 0;
        do {
            waited = ::waitpid(child, &status, 0);
        } while (waited < 0 && errno == EINTR);
        std::string line(marker);
        if (waited < 0) {
            line += "exit 1";
        } else if (WIFSIGNALED(status)) {
            line += "signal " + std::to_string(WTERMSIG(status));
        } else {
            line += "exit " + std::to_string(WEXITSTATUS(status));
        }
        writeOut(line + '\n');
    }
    return 0;
}

} // namespace tallyvox::indexer
