#include "indexer/readers/PdfReader.h"

#include "indexer/Progress.h"
#include "indexer/Threads.h"

#include "indexer/readers/CutReport.h"
#include "indexer/readers/ReadLimits.h"

#include <poppler-document.h>
#include <poppler-global.h>
#include <poppler-page.h>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <ctime>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace tallyvox::indexer::readers {

namespace {

using Clock = std::chrono::steady_clock;

void ignorePopplerMessage(const std::string&, void*) {}

// Pages are shared between the page readers in runs of this many, turn about: each reader
// skips to its own runs, and the indexer takes the pages in order, so a reader is never
// more than a few runs ahead of the one the indexer waits for.
constexpr std::uint32_t runPages = 8;

// How many page readers a document of this many pages keeps busy, at most allowed: each
// has at least one run of its own. Children compute it as the parent does.
std::uint32_t readersFor(std::uint32_t pages, std::uint32_t allowed)
{
    const std::uint32_t runs = pages / runPages + (pages % runPages != 0 ? 1 : 0);
    return std::max<std::uint32_t>(1, std::min(runs, allowed));
}

std::uint32_t readerOf(std::uint32_t page, std::uint32_t readers)
{
    return page / runPages % readers;
}

// What the child sends, each message a header and then size bytes. Retire: it has used
// its share of CPU time and ends after the pages it sent; a new one goes on from there.
enum class Message : std::uint32_t { PageCount, PageText, Retire };

struct Header {
    Message kind;
    std::uint32_t page;
    std::uint32_t size;
};

bool writeAll(int fd, const void* data, std::size_t size)
{
    const auto* bytes = static_cast<const char*>(data);
    while (size > 0) {
        const ssize_t n = ::write(fd, bytes, size);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            return false;
        }
        bytes += n;
        size -= static_cast<std::size_t>(n);
    }
    return true;
}

std::chrono::seconds cpuTime()
{
    timespec used{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return std::chrono::seconds(used.tv_sec);
}

// Which pages one child reads: those from first on that fall to reader index when the
// document's pages are shared between at most allowed readers.
struct Share {
    std::uint32_t index;
    std::uint32_t allowed;
    std::uint32_t first;
};

// In the child: the page count, then the text of each of its pages, in order.
void extractPages(const std::string& path, Share share, int fd)
{
    poppler::set_debug_error_function(ignorePopplerMessage, nullptr);
    const std::unique_ptr<poppler::document> doc(poppler::document::load_from_file(path));
    if (!doc || doc->is_locked()) {
        return;
    }
    const auto pages = static_cast<std::uint32_t>(std::max(doc->pages(), 0));
    const Header count{Message::PageCount, pages, 0};
    if (!writeAll(fd, &count, sizeof count)) {
        return;
    }
    const std::uint32_t readers = readersFor(pages, share.allowed);
    for (std::uint32_t i = share.first; i < pages; ++i) {
        if (readerOf(i, readers) != share.index) {
            continue;
        }
        if (cpuTime().count() >= ReadLimits::pdfReaderCpuSeconds) {
            const Header retire{Message::Retire, i, 0};
            writeAll(fd, &retire, sizeof retire);
            return;
        }
        const std::unique_ptr<poppler::page> page(doc->create_page(static_cast<int>(i)));
        poppler::byte_array utf8;
        if (page) {
            // The layout pdftotext uses by default: reading order, without spatial padding.
            utf8 =
                page->text(poppler::rectf(), poppler::page::non_raw_non_physical_layout).to_utf8();
        }
        const Header header{Message::PageText, i, static_cast<std::uint32_t>(utf8.size())};
        if (!writeAll(fd, &header, sizeof header) || !writeAll(fd, utf8.data(), utf8.size())) {
            return;
        }
    }
}

enum class Got { Data, End, Late };

// Reads size bytes before deadline.
Got readAll(int fd, char* out, std::size_t size, Clock::time_point deadline)
{
    while (size > 0) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (left.count() <= 0) {
            return Got::Late;
        }
        pollfd p{fd, POLLIN, 0};
        const int ready = ::poll(&p, 1, static_cast<int>(left.count()));
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready <= 0) {
            return ready == 0 ? Got::Late : Got::End;
        }
        const ssize_t n = ::read(fd, out, size);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        if (n <= 0) {
            return Got::End;
        }
        out += n;
        size -= static_cast<std::size_t>(n);
    }
    return Got::Data;
}

std::chrono::seconds pageTime()
{
    return std::chrono::seconds(ReadLimits::maxPdfPageSeconds);
}

// One child reading its share of the pages, watched from here.
class PageReader {
public:
    PageReader(const std::string& path, Share share)
    {
        int fds[2];
        if (::pipe2(fds, O_CLOEXEC) != 0) {
            return;
        }
        // Room for a few runs of pages, so that a reader whose turn has not come keeps
        // working; best effort, the default 64 KB works too.
        ::fcntl(fds[1], F_SETPIPE_SZ, 1 << 20);
        m_child = ::fork();
        if (m_child == 0) {
            // Dies with the indexer, whoever ends it.
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::close(fds[0]);
            extractPages(path, share, fds[1]);
            ::_exit(0);
        }
        ::close(fds[1]);
        m_fd = m_child > 0 ? fds[0] : -1;
        if (m_child < 0) {
            ::close(fds[0]);
        }
    }

    ~PageReader()
    {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
        if (m_child > 0) {
            ::kill(m_child, SIGKILL);
            int status = 0;
            while (::waitpid(m_child, &status, 0) < 0 && errno == EINTR) {
            }
        }
    }

    PageReader(const PageReader&) = delete;
    PageReader& operator=(const PageReader&) = delete;

    /// The next message, within the time of a page (two for the first, which includes
    /// loading the document); text is only read into text for PageText.
    Got next(Header& header, std::string& text)
    {
        if (m_fd < 0) {
            return Got::End;
        }
        const auto deadline = Clock::now() + pageTime() * (m_started ? 1 : 2);
        m_started = true;
        Got got = readAll(m_fd, reinterpret_cast<char*>(&header), sizeof header, deadline);
        if (got == Got::Data && header.kind == Message::PageText) {
            text.resize(header.size);
            got = readAll(m_fd, text.data(), text.size(), deadline);
        }
        return got;
    }

private:
    pid_t m_child = -1;
    int m_fd = -1;
    bool m_started = false;
};

// Takes the pages from the readers in order and keeps the readers going: a reader whose
// page fails or is late is replaced by one that starts after that page.
class PageMerger {
public:
    PageMerger(const std::string& path, std::uint32_t allowed, TextSink& sink)
        : m_path(path), m_allowed(allowed), m_sink(sink)
    {}

    void run()
    {
        // The first reader tells the page count, and with it how many readers to start.
        m_readers.push_back(std::make_unique<PageReader>(m_path, Share{0, m_allowed, 0}));
        std::optional<std::uint32_t> pages;
        Header header{};
        std::string text;
        const Got got = m_readers[0]->next(header, text);
        if (got == Got::Data && header.kind == Message::PageCount) {
            pages = header.page;
        }
        if (!pages) {
            if (got == Got::Late) {
                CutReport::note("PDF: opening it took too long");
            }
            return; // not a document poppler can open
        }
        m_pages = *pages;
        m_readers.resize(readersFor(m_pages, m_allowed));
        for (std::uint32_t i = 1; i < m_readers.size(); ++i) {
            start(i, 0);
        }
        while (m_next < m_pages) {
            if (!step()) {
                CutReport::note("PDF: too many pages failed; the rest was not read");
                return;
            }
        }
    }

private:
    void start(std::uint32_t index, std::uint32_t first)
    {
        m_readers[index] = std::make_unique<PageReader>(m_path, Share{index, m_allowed, first});
    }

    // Delivers the next page, or leaves it out; false when too many pages failed.
    bool step()
    {
        const std::uint32_t index = readerOf(m_next, static_cast<std::uint32_t>(m_readers.size()));
        Header header{};
        Got got = Got::Data;
        do {
            got = m_readers[index]->next(header, m_text);
        } while (got == Got::Data && header.kind == Message::PageCount);
        if (got == Got::Data && header.kind == Message::PageText && header.page == m_next) {
            m_sink.text(m_text);
            m_sink.boundary();
            advance();
            return true;
        }
        if (got == Got::Data && header.kind == Message::Retire && header.page == m_next) {
            start(index, m_next); // the same pages, from a fresh reader
            return true;
        }
        const std::string page =
            "PDF: page " + std::to_string(m_next + 1) + " of " + std::to_string(m_pages);
        CutReport::note(page + (got == Got::Late
                                    ? " took longer than " +
                                          std::to_string(ReadLimits::maxPdfPageSeconds) +
                                          " s and was left out"
                                    : " could not be read and was left out"));
        advance();
        if (++m_failures >= ReadLimits::maxPdfPageFailures) {
            return false;
        }
        start(index, m_next);
        return true;
    }

    void advance()
    {
        ++m_next;
        progress::setShare(m_next, m_pages);
    }

    const std::string& m_path;
    std::uint32_t m_allowed;
    TextSink& m_sink;
    std::vector<std::unique_ptr<PageReader>> m_readers;
    std::string m_text;
    std::uint32_t m_pages = 0;
    std::uint32_t m_next = 0;
    int m_failures = 0;
};

} // namespace

void readPdf(const std::string& path, TextSink& sink)
{
    // More readers than cores cannot go faster, and each holds the document in memory.
    const unsigned cores = availableCores();
    readPdf(path, sink, std::min(allowedThreads(cores), cores));
}

void readPdf(const std::string& path, TextSink& sink, unsigned readers)
{
    PageMerger(path, std::max(readers, 1u), sink).run();
}

} // namespace tallyvox::indexer::readers
