#include "indexer/readers/PdfReader.h"

#include <poppler-document.h>
#include <poppler-global.h>
#include <poppler-page.h>

#include <memory>

namespace tallyvox::indexer::readers {

namespace {

void ignorePopplerMessage(const std::string&, void*) {}

} // namespace

void readPdf(const std::string& path, TextSink& sink)
{
    // Damaged files make poppler talk on stderr; the indexer's output is its result file.
    poppler::set_debug_error_function(ignorePopplerMessage, nullptr);
    const std::unique_ptr<poppler::document> doc(poppler::document::load_from_file(path));
    if (!doc || doc->is_locked()) {
        return;
    }
    const int pages = doc->pages();
    for (int i = 0; i < pages; ++i) {
        const std::unique_ptr<poppler::page> page(doc->create_page(i));
        if (!page) {
            continue;
        }
        // The layout pdftotext uses by default: reading order, without spatial padding.
        const poppler::byte_array utf8 =
            page->text(poppler::rectf(), poppler::page::non_raw_non_physical_layout).to_utf8();
        sink.text(std::string_view(utf8.data(), utf8.size()));
        sink.boundary();
    }
}

} // namespace tallyvox::indexer::readers
