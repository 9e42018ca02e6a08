// Runs a fuzz target's seed corpus once, input by input, in the ordinary build, so that a
// seed that crashes, leaks or trips a sanitizer fails `make test` as well as `make fuzz`.
//   NAME_replay DIR_OR_FILE...

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <system_error>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

bool replay(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    if (!in) {
        std::fprintf(stderr, "cannot read %s\n", path.c_str());
        return false;
    }
    const std::vector<char> bytes((std::istreambuf_iterator<char>(in)),
                                  std::istreambuf_iterator<char>());
    std::printf("%s (%zu bytes)\n", path.c_str(), bytes.size());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    int inputs = 0;
    bool ok = true;
    for (int i = 1; i < argc; ++i) {
        const std::filesystem::path root(argv[i]);
        std::error_code error;
        if (std::filesystem::is_directory(root, error)) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
                if (entry.is_regular_file()) {
                    ok = replay(entry.path()) && ok;
                    ++inputs;
                }
            }
        } else {
            ok = replay(root) && ok;
            ++inputs;
        }
    }
    // An empty corpus would make the test pass while checking nothing.
    if (inputs == 0) {
        std::fprintf(stderr, "no inputs to replay\n");
        return 1;
    }
    std::printf("%d inputs replayed\n", inputs);
    return ok ? 0 : 1;
}
