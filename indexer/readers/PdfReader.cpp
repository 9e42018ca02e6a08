#include "indexer/readers/PdfReader.h"

#include "indexer/Progress.h"

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

#include <cerrno>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

namespace tallyvox::indexer::readers {

namespace {

using Clock = std::chrono::steady_clock;

void ignorePopplerMessage(const std::string&, void*) {}

// What the child sends, each message a header and then size bytes.
enum class Message : std::uint32_t { PageCount, PageText };

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

// In the child: the page count, then the text of each page from first on.
void extractPages(const std::string& path, std::uint32_t first, int fd)
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
    for (std::uint32_t i = first; i < pages; ++i) {
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

// One child reading pages from first on. Returns the page it stopped at, or nothing when
// the document is done (or gives no text at all).
class PageReader {
public:
    PageReader(const std::string& path, std::uint32_t first, Clock::time_point stop)
        : m_first(first), m_stop(stop)
    {
        int fds[2];
        if (::pipe2(fds, O_CLOEXEC) != 0) {
            return;
        }
        m_child = ::fork();
        if (m_child == 0) {
            // Dies with the indexer, whoever ends it.
            ::prctl(PR_SET_PDEATHSIG, SIGKILL);
            ::close(fds[0]);
            extractPages(path, first, fds[1]);
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

    /// Delivers pages until the end; returns how far it got (pages() when all were read).
    std::uint32_t run(TextSink& sink, bool& late)
    {
        if (m_fd < 0) {
            return 0;
        }
        // Loading may take longer than a page.
        Header header{};
        std::uint32_t page = m_first;
        auto deadline = std::min(m_stop, Clock::now() + pageTime() * 2);
        for (;;) {
            const Got got =
                readAll(m_fd, reinterpret_cast<char*>(&header), sizeof header, deadline);
            if (got != Got::Data) {
                late = got == Got::Late;
                return page;
            }
            if (header.kind == Message::PageCount) {
                m_pages = header.page;
            } else {
                std::string text(header.size, '\0');
                if (readAll(m_fd, text.data(), text.size(), deadline) != Got::Data) {
                    late = Clock::now() >= deadline;
                    return page;
                }
                sink.text(text);
                sink.boundary();
                page = header.page + 1;
                if (m_pages) {
                    progress::setShare(page, *m_pages);
                }
            }
            if (m_pages && page >= *m_pages) {
                return page;
            }
            deadline = std::min(m_stop, Clock::now() + pageTime());
        }
    }

    /// The document's page count, once the child has told it.
    std::optional<std::uint32_t> pages() const { return m_pages; }

private:
    static std::chrono::seconds pageTime()
    {
        return std::chrono::seconds(ReadLimits::maxPdfPageSeconds);
    }

    std::uint32_t m_first;
    Clock::time_point m_stop;
    pid_t m_child = -1;
    int m_fd = -1;
    std::optional<std::uint32_t> m_pages;
};

} // namespace

void readPdf(const std::string& path, TextSink& sink)
{
    std::error_code ec;
    const std::uintmax_t bytes = std::filesystem::file_size(path, ec);
    const auto seconds = std::chrono::seconds(
        ReadLimits::minPdfSeconds +
        static_cast<std::int64_t>((ec ? 0 : bytes) / ReadLimits::pdfBytesPerSecond));
    const auto stop = Clock::now() + seconds;
    std::uint32_t next = 0;
    // A page that fails or takes too long is left out, and a new child goes on after it.
    for (int attempt = 0; attempt < 16; ++attempt) {
        PageReader reader(path, next, stop);
        bool late = false;
        const std::uint32_t reached = reader.run(sink, late);
        const auto pages = reader.pages();
        if (!pages && late) {
            CutReport::note("PDF: opening it took too long");
        }
        if (!pages || reached >= *pages) {
            return; // done, or not a document poppler can open
        }
        const std::string page =
            "PDF: page " + std::to_string(reached + 1) + " of " + std::to_string(*pages);
        if (Clock::now() >= stop) {
            CutReport::note(page + ": reading stopped after " + std::to_string(seconds.count()) +
                            " s");
            return;
        }
        CutReport::note(page + (late ? " took longer than " +
                                           std::to_string(ReadLimits::maxPdfPageSeconds) +
                                           " s and was left out"
                                     : " could not be read and was left out"));
        next = reached + 1;
    }
    CutReport::note("PDF: too many pages failed; the rest was not read");
}

} // namespace tallyvox::indexer::readers
