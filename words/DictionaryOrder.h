#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <unicode/ucol.h>

namespace tallyvox {

/// The ICU locale whose collation is the user's: the first of LC_ALL, LC_COLLATE and LANG
/// that is set, without its ".codeset" and "@modifier" ("sv_SE.UTF-8" gives "sv_SE").
/// "C", "POSIX" and nothing give the root collation (""), which is CLDR's order for all
/// languages.
QByteArray collationLocale(const QByteArray& lcAll, const QByteArray& lcCollate,
                           const QByteArray& lang);

/// collationLocale() of this process's environment.
QByteArray collationLocaleOfEnvironment();

/// The order of a locale's dictionary: ICU collation, compared through sort keys so that
/// each word is looked at once, however often the sort compares it.
class DictionaryOrder {
public:
    /// The collation of an ICU locale id; root for "".
    explicit DictionaryOrder(const QByteArray& locale);
    ~DictionaryOrder();
    DictionaryOrder(const DictionaryOrder&) = delete;
    DictionaryOrder& operator=(const DictionaryOrder&) = delete;

    /// False when ICU has no collator to give; the order is then that of code units.
    bool isValid() const { return m_collator != nullptr; }

    /// Bytes that compare (as unsigned bytes) as the word collates; empty when not valid.
    QByteArray sortKey(QStringView word) const;

private:
    UCollator* m_collator = nullptr;
};

} // namespace tallyvox
