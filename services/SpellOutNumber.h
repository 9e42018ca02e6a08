#pragma once

#include <QString>

namespace tallyvox {

class Desktop;

/// Reads the leading number of text (C-locale decimal notation, 0 when there is none),
/// spells it out in the current locale's words, puts them on the clipboard, plays "Ping"
/// and says so; beeps and alerts when no words come out.
void SpellOutNumber(Desktop& desktop, const QString& text);

} // namespace tallyvox
