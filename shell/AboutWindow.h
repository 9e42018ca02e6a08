#pragma once

#include "support/Translation.h"

#include <QDialog>

namespace tallyvox {

class Desktop;

/// What the About window says besides the name and version.
namespace productInfo {
inline constexpr char context[] = "tallyvox::AboutWindow";
inline constexpr char16_t summary[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::AboutWindow", "Turns documents into word lists with their counts.");
inline constexpr char16_t copyright[] = u"\u00a9 2026 Okaluna Software";
inline constexpr char16_t licence[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::AboutWindow",
    "Licence: GNU General Public License, version 3 or later (GPL-3.0-or-later)");
} // namespace productInfo

/// The About window of the Help menu: the version, the licence and the project's page,
/// which its link opens through the desktop.
class AboutWindow final : public QDialog {
    Q_OBJECT
public:
    AboutWindow(Desktop& desktop, QWidget* parent = nullptr);
};

} // namespace tallyvox
