#include "indexer/readers/HtmlReader.h"

#include "indexer/readers/MarkupFilter.h"
#include "indexer/readers/MarkupParser.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace tallyvox::indexer::readers {

namespace {

using namespace std::string_view_literals;

// Elements whose content is never shown as text.
constexpr std::array hiddenElements = {
    "head"sv, "iframe"sv, "noembed"sv, "noframes"sv, "script"sv, "style"sv, "template"sv, "title"sv,
};

template <std::size_t N>
bool contains(const std::array<std::string_view, N>& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

class HtmlText : public MarkupHandler {
public:
    explicit HtmlText(TextSink& sink) : m_sink(sink) {}

    void startElement(std::string_view name, const MarkupAttributes&) override
    {
        if (contains(hiddenElements, name)) {
            ++m_hidden;
        } else if (!isInlineHtmlElement(name)) {
            m_sink.boundary();
        }
    }

    void endElement(std::string_view name) override
    {
        if (contains(hiddenElements, name)) {
            m_hidden -= m_hidden > 0 ? 1 : 0;
        } else if (!isInlineHtmlElement(name)) {
            m_sink.boundary();
        }
    }

    void characters(std::string_view utf8) override
    {
        if (m_hidden == 0) {
            m_sink.text(utf8);
        }
    }

private:
    TextSink& m_sink;
    int m_hidden = 0;
};

} // namespace

void readHtml(const ByteSource& source, TextSink& sink)
{
    HtmlText handler(sink);
    parseHtml(source, handler);
}

} // namespace tallyvox::indexer::readers
