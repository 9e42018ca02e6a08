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

// Writes up to a set number of bytes, then no more.
class Output {
public:
    explicit Output(unsigned long long size) : m_left(size) {}
    bool done() const { return m_left == 0; }
    /// Writes what fits of text, and empties it.
    void put(std::string& text)
    {
        const std::size_t n = text.size() < m_left ? text.size() : m_left;
        if (std::fwrite(text.data(), 1, n, stdout) != n) {
            std::exit(1);
        }
        m_left -= n;
        text.clear();
    }

private:
    unsigned long long m_left;
};

// Where the growing stands: words seen and new words made so far.
struct Growth {
    unsigned long long every;
    unsigned long long words = 0;
    unsigned long long made = 0;
};

// One more copy of base, with every growth.every-th word made new.
void grownCopy(const std::string& base, Growth& growth, Output& out)
{
    std::string chunk;
    bool inWord = false;
    for (const char c : base) {
        const bool letter = isLetter(c);
        if (inWord && !letter && growth.words % growth.every == 0) {
            appendLetters(chunk, growth.made++);
        }
        if (letter && !inWord) {
            ++growth.words;
        }
        inWord = letter;
        chunk += c;
        if (chunk.size() >= (1u << 20)) {
            out.put(chunk);
            if (out.done()) {
                return;
            }
        }
    }
    out.put(chunk);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s BASE SIZE [EVERY]\n", argv[0]);
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    std::string base((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    Growth growth{argc > 3 ? std::strtoull(argv[3], nullptr, 10) : 110};
    if (base.empty() || growth.every == 0) {
        return 1;
    }
    Output out(std::strtoull(argv[2], nullptr, 10));
    std::string first = base;
    out.put(first);
    while (!out.done()) {
        grownCopy(base, growth, out);
    }
    return 0;
}
