// Times the result file's round trip at a given table size: the indexer's binary writer, the
// application's reader, and libplist on the same files for comparison.
//   tallyvox_bench_wordtable WORDS FOLDER [LIBPLIST_XML_WORDS]

#include "indexer/BinaryPlistWriter.h"
#include "words/WordTableReader.h"

#include <QCoreApplication>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <random>
#include <string>

#include <plist/plist.h>

using namespace tallyvox;

namespace {

using Clock = std::chrono::steady_clock;

double since(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

// Distinct made-up words of 2 to 14 letters, one in twenty with a non-ASCII letter, and
// counts with a long tail, as in real text.
indexer::WordMap makeWords(std::size_t n)
{
    indexer::WordMap words;
    std::mt19937_64 random(42);
    static const char* const accents[] = {"é", "ü", "ß", "ø", "ж"};
    for (std::size_t i = 0; words.size() < n; ++i) {
        std::string word;
        const std::size_t length = 2 + random() % 13;
        for (std::size_t j = 0; j < length; ++j) {
            word += static_cast<char>('a' + random() % 26);
        }
        if (i % 20 == 0) {
            word += accents[i % 5];
        }
        words.add(word, 1 + (n / (1 + random() % n)) % 100000);
    }
    return words;
}

std::string readAll(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void readWithLibplist(const char* label, const std::string& bytes, bool xml)
{
    const Clock::time_point start = Clock::now();
    plist_t root = nullptr;
    if (xml) {
        plist_from_xml(bytes.data(), static_cast<uint32_t>(bytes.size()), &root);
    } else {
        plist_from_bin(bytes.data(), static_cast<uint32_t>(bytes.size()), &root);
    }
    const double seconds = since(start);
    std::printf("%s %.3f s (%u entries)\n", label, seconds, root ? plist_dict_get_size(root) : 0);
    plist_free(root);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s WORDS FOLDER [LIBPLIST_XML_WORDS]\n", argv[0]);
        return 2;
    }
    const std::size_t n = std::strtoull(argv[1], nullptr, 10);
    const std::string folder = argv[2];
    const std::string binaryPath = folder + "/table.bplist";
    const std::string xmlPath = folder + "/table.xml";

    const indexer::WordMap words = makeWords(n);
    Clock::time_point start = Clock::now();
    std::FILE* file = std::fopen(binaryPath.c_str(), "wb");
    if (!file || !indexer::writeBinaryPlist(file, words) || std::fclose(file) != 0) {
        return 1;
    }
    std::printf("indexer writes binary: %.3f s\n", since(start));

    start = Clock::now();
    const std::optional<WordTable> binary = ReadWordTableFile(QString::fromStdString(binaryPath));
    std::printf("application reads binary: %.3f s (%lld entries)\n", since(start),
                binary ? static_cast<long long>(binary->size()) : -1LL);
    const std::string binaryBytes = readAll(binaryPath);
    std::printf("binary size: %.1f MB\n", double(binaryBytes.size()) / 1e6);
    readWithLibplist("libplist plist_from_bin:", binaryBytes, false);

    // An XML file of the same table, as libplist writes it.
    plist_t root = nullptr;
    plist_from_bin(binaryBytes.data(), static_cast<uint32_t>(binaryBytes.size()), &root);
    char* xml = nullptr;
    uint32_t xmlLength = 0;
    plist_to_xml(root, &xml, &xmlLength);
    plist_free(root);
    std::ofstream(xmlPath, std::ios::binary).write(xml, xmlLength);
    plist_to_xml_free(xml);

    start = Clock::now();
    const std::optional<WordTable> fromXml = ReadWordTableFile(QString::fromStdString(xmlPath));
    std::printf("application reads XML: %.3f s (%lld entries, same table: %s)\n", since(start),
                fromXml ? static_cast<long long>(fromXml->size()) : -1LL,
                fromXml && binary && *fromXml == *binary ? "yes" : "NO");

    // libplist's XML reader grows quadratically: time it on a smaller table only.
    if (argc > 3) {
        const std::size_t small = std::strtoull(argv[3], nullptr, 10);
        const indexer::WordMap fewer = makeWords(small);
        std::FILE* smallFile = std::fopen(binaryPath.c_str(), "wb");
        if (!smallFile || !indexer::writeBinaryPlist(smallFile, fewer) ||
            std::fclose(smallFile) != 0) {
            return 1;
        }
        const std::string smallBinary = readAll(binaryPath);
        plist_from_bin(smallBinary.data(), static_cast<uint32_t>(smallBinary.size()), &root);
        plist_to_xml(root, &xml, &xmlLength);
        plist_free(root);
        std::ofstream(xmlPath, std::ios::binary).write(xml, xmlLength);
        start = Clock::now();
        const std::optional<WordTable> mine = ReadWordTableFile(QString::fromStdString(xmlPath));
        std::printf("at %zu words: application reads XML: %.3f s\n", small, since(start));
        readWithLibplist(
            ("at " + std::to_string(small) + " words: libplist plist_from_xml:").c_str(),
            std::string(xml, xmlLength), true);
        plist_to_xml_free(xml);
    }
    std::remove(binaryPath.c_str());
    std::remove(xmlPath.c_str());
    return 0;
}
