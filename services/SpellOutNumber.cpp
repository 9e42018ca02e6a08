#include "services/SpellOutNumber.h"

#include "services/Pasteboard.h"
#include "support/Desktop.h"

#include <QCoreApplication>
#include <unicode/locid.h>
#include <unicode/rbnf.h>
#include <unicode/unistr.h>

#include <clocale>
#include <cstdlib>
#include <locale.h>
#include <memory>
#include <optional>

namespace tallyvox {

namespace {

// Like strtod in the C locale whatever the process's locale: leading white space is
// skipped and reading stops at the first character that does not belong, so '1,000' is 1.
double leadingNumber(const QString& text)
{
    const locale_t c = ::newlocale(LC_ALL_MASK, "C", locale_t{});
    if (c == locale_t{}) {
        return 0.0;
    }
    const QByteArray bytes = text.toUtf8();
    const double value = ::strtod_l(bytes.constData(), nullptr, c);
    ::freelocale(c);
    return value;
}

std::optional<QString> spelledOut(double value)
{
    UErrorCode status = U_ZERO_ERROR;
    icu::RuleBasedNumberFormat format(icu::URBNF_SPELLOUT, icu::Locale::getDefault(), status);
    if (U_FAILURE(status)) {
        return std::nullopt;
    }
    icu::UnicodeString words;
    format.format(value, words);
    if (words.isBogus() || words.isEmpty()) {
        return std::nullopt;
    }
    return QString(reinterpret_cast<const QChar*>(words.getBuffer()), words.length());
}

} // namespace

void SpellOutNumber(Desktop& desktop, const QString& text)
{
    const std::optional<QString> words = spelledOut(leadingNumber(text));
    if (!words) {
        desktop.beep();
        desktop.alert(QCoreApplication::translate("tallyvox::SpellOutNumber",
                                                  "The text could not be spelled out."));
        return;
    }
    PutTextOnClipboard(desktop, *words);
    desktop.playSound(QStringLiteral("Ping"));
    desktop.alert(
        QCoreApplication::translate("tallyvox::SpellOutNumber",
                                    "The following \"spell out\" has been put on the clipboard: %1")
            .arg(*words));
}

} // namespace tallyvox
