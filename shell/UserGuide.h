#pragma once

#include <QUrl>

namespace tallyvox {

/// The product's pages. There is no web site yet: 'HELP' opens the user guide installed
/// with the program, and the website item the guide's section on the project.
namespace webAddresses {
/// 'WEB1' and the About window: the guide's section (its HTML id) on the project.
inline constexpr char projectSection[] = "project";
/// 'MAS1': the store page, which the desktop's software centre shows.
inline constexpr char store[] = "appstream:com.okaluna.Tallyvox";
} // namespace webAddresses

/// The installed user guide, found relative to the program as its indexers are (the build
/// tree mirrors that), at one of its sections when one is named.
QUrl userGuideUrl(const QString& section = {});

} // namespace tallyvox
