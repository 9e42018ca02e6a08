#pragma once

#include "indexer/TextSink.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <string>

/// Collects what a reader delivers and counts its words with ICU's word breaks, the way
/// the indexer does; a boundary becomes a line break, which always ends a word.
class WordCountingSink : public tallyvox::indexer::TextSink {
public:
    void text(std::string_view utf8) override { m_text.append(utf8); }
    void boundary() override { m_text.push_back('\n'); }

    const std::string& collected() const { return m_text; }
    QMap<QString, int> words() const { return countWords(m_text); }
    /// The text with each run of boundaries as one '|', none at either end.
    QByteArray bars() const;

    /// Words of UTF-8 text; typographic apostrophes count as straight ones.
    static QMap<QString, int> countWords(const std::string& utf8);

private:
    std::string m_text;
};
