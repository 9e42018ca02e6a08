#pragma once

#include <QString>

#include <string_view>

namespace tallyvox {

/// A command's four-character code: what a menu item, a button or a control issues.
struct CommandId {
    quint32 code = 0;

    /// From exactly four Latin-1 characters; 'ok  ' keeps its two trailing blanks.
    static constexpr CommandId fromChars(std::string_view chars)
    {
        quint32 value = 0;
        for (char c : chars.substr(0, 4)) {
            value = (value << 8) | static_cast<unsigned char>(c);
        }
        return CommandId{chars.size() == 4 ? value : 0};
    }

    QString toString() const
    {
        QString text;
        for (int shift = 24; shift >= 0; shift -= 8) {
            text.append(QChar(static_cast<char16_t>((code >> shift) & 0xFF)));
        }
        return text;
    }

    friend constexpr bool operator==(CommandId, CommandId) = default;
};

namespace commands {
inline constexpr CommandId Help = CommandId::fromChars("HELP");
/// The standard About command of the original platform's application menu.
inline constexpr CommandId About = CommandId::fromChars("abou");
inline constexpr CommandId Stop = CommandId::fromChars("not!");
inline constexpr CommandId Ok = CommandId::fromChars("ok  ");
inline constexpr CommandId Open = CommandId::fromChars("open");
inline constexpr CommandId Preferences = CommandId::fromChars("pref");
inline constexpr CommandId Quit = CommandId::fromChars("quit");
inline constexpr CommandId Close = CommandId::fromChars("clos");
inline constexpr CommandId Website = CommandId::fromChars("WEB1");
inline constexpr CommandId Store = CommandId::fromChars("MAS1");
inline constexpr CommandId QuitWhenDone = CommandId::fromChars("Qwdo");
inline constexpr CommandId IncludeFrequency = CommandId::fromChars("IFRQ");
inline constexpr CommandId SortBy = CommandId::fromChars("SORT");
inline constexpr CommandId SeparateBy = CommandId::fromChars("SEPA");
inline constexpr CommandId LineStyle = CommandId::fromChars("LINE");
// The word-list options' controls: codes of our own, passed on like the five above.
inline constexpr CommandId FoldCase = CommandId::fromChars("FOLD");
inline constexpr CommandId DictionaryOrder = CommandId::fromChars("DICT");
inline constexpr CommandId MinimumCount = CommandId::fromChars("MINC");
inline constexpr CommandId StopListPath = CommandId::fromChars("STPL");
inline constexpr CommandId ChooseStopList = CommandId::fromChars("STPC");
inline constexpr CommandId CombineFiles = CommandId::fromChars("COMB");
inline constexpr CommandId ListFormat = CommandId::fromChars("LFMT");
inline constexpr CommandId IncludeTotals = CommandId::fromChars("TOTL");
inline constexpr CommandId IncludeRange = CommandId::fromChars("RANG");
inline constexpr CommandId IncludePerMillion = CommandId::fromChars("PMIL");
inline constexpr CommandId ReferencePath = CommandId::fromChars("REFP");
inline constexpr CommandId ChooseReference = CommandId::fromChars("REFC");
inline constexpr CommandId KeynessThreshold = CommandId::fromChars("KEYT");
inline constexpr CommandId NGramLength = CommandId::fromChars("NGRM");
inline constexpr CommandId LemmaListPath = CommandId::fromChars("LEMP");
inline constexpr CommandId ChooseLemmaList = CommandId::fromChars("LEMC");
inline constexpr CommandId Lemmatize = CommandId::fromChars("LEMZ");
inline constexpr CommandId LemmaLanguage = CommandId::fromChars("LEML");
} // namespace commands

} // namespace tallyvox
