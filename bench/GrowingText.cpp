// Writes SIZE bytes of text whose vocabulary keeps growing, for the benchmarks' gigabyte rows:
// the BASE text once as it is, then again and again with every EVERY-th word made new by a
// suffix that never repeats. Real text grows its vocabulary with its length (new names,
// numbers, typos); repeating a text unchanged would keep the table at the size of one copy.
//   tallyvox_bench_grow BASE SIZE [EVERY]

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace {

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// n in lower-case letters, base 26.
void appendLetters(std::string& out, unsigned long long n)
{
    char digits[16];
    int length = 0;
    do {
        digits[length++] = static_cast<char>('a' + n % 26);
        n /= 26;
    } while (n > 0);
    while (length > 0) {
        out += digits[--length];
    }
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s BASE SIZE [EVERY]\n", argv[0]);
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    const std::string base((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    const unsigned long long size = std::strtoull(argv[2], nullptr, 10);
    const unsigned long long every = argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 110;
    if (base.empty() || every == 0) {
        return 1;
    }

    unsigned long long written = 0;
    unsigned long long words = 0;
    unsigned long long made = 0;
    std::string out;
    const auto emit = [&](bool last) {
        if (out.size() > size - written) {
            out.resize(size - written);
        }
        if (last || out.size() >= (1u << 20) || written + out.size() == size) {
            if (std::fwrite(out.data(), 1, out.size(), stdout) != out.size()) {
                std::exit(1);
            }
            written += out.size();
            out.clear();
        }
    };
    for (bool first = true; written < size; first = false) {
        if (first) {
            out = base;
            emit(true);
            continue;
        }
        bool inWord = false;
        for (std::size_t i = 0; i < base.size() && written < size; ++i) {
            const char c = base[i];
            const bool letter = isLetter(c);
            if (inWord && !letter && words % every == 0) {
                appendLetters(out, made++);
            }
            if (letter && !inWord) {
                ++words;
            }
            inWord = letter;
            out += c;
            if (out.size() >= (1u << 20)) {
                emit(false);
            }
        }
        emit(true);
    }
    return 0;
}
