#pragma once

#include <QString>

/// Marks a text kept as a UTF-16 constant for translation. lupdate reads the narrow
/// literal (it cannot read u"" ones); the program keeps the UTF-16 array, so code that
/// uses the constant as it is (logs, comparisons) is unchanged.
#define TALLYVOX_TRANSLATE_NOOP(context, text) u"" text

namespace tallyvox {

/// The user's language's version of a text marked with TALLYVOX_TRANSLATE_NOOP in this
/// context; the text itself where there is no translation.
QString translated(const char* context, const char16_t* text);

} // namespace tallyvox
