#include "indexer/readers/XmlReader.h"

#include "indexer/readers/MarkupParser.h"

namespace tallyvox::indexer::readers {

namespace {

class RootName : public MarkupHandler {
public:
    void startElement(std::string_view name, const MarkupAttributes&) override
    {
        root = name;
        stop();
    }
    void endElement(std::string_view) override {}
    void characters(std::string_view) override {}

    std::string root;
};

class AllText : public MarkupHandler {
public:
    explicit AllText(TextSink& sink) : m_sink(sink) {}
    void startElement(std::string_view, const MarkupAttributes&) override { m_sink.boundary(); }
    void endElement(std::string_view) override { m_sink.boundary(); }
    void characters(std::string_view utf8) override { m_sink.text(utf8); }

private:
    TextSink& m_sink;
};

class SvgText : public MarkupHandler {
public:
    explicit SvgText(TextSink& sink) : m_sink(sink) {}

    void startElement(std::string_view name, const MarkupAttributes&) override
    {
        if (name == "text") {
            m_sink.boundary();
            ++m_inText;
        } else if (m_inText > 0 && (name == "title" || name == "desc")) {
            ++m_skipped;
        }
    }

    void endElement(std::string_view name) override
    {
        if (name == "text" && m_inText > 0) {
            m_sink.boundary();
            --m_inText;
        } else if (m_inText > 0 && m_skipped > 0 && (name == "title" || name == "desc")) {
            --m_skipped;
        }
    }

    void characters(std::string_view utf8) override
    {
        if (m_inText > 0 && m_skipped == 0) {
            m_sink.text(utf8);
        }
    }

private:
    TextSink& m_sink;
    int m_inText = 0;
    int m_skipped = 0;
};

} // namespace

std::string xmlRootName(const ByteSource& source)
{
    RootName handler;
    parseXml(source, handler);
    return handler.root;
}

void readXml(const ByteSource& source, TextSink& sink)
{
    AllText handler(sink);
    parseXml(source, handler);
}

void readSvg(const ByteSource& source, TextSink& sink)
{
    SvgText handler(sink);
    parseXml(source, handler);
}

} // namespace tallyvox::indexer::readers
