#pragma once

#include "support/Desktop.h"

namespace tallyvox::waylandClipboard {

// A Wayland compositor hands the selections only to the client that has the keyboard
// focus, and takes a new clipboard only from it. wl-clipboard's tools (wl-paste, wl-copy)
// speak the data-control protocol where the compositor offers it, and so reach the
// selections without the focus.

/// True in a Wayland session (WAYLAND_DISPLAY) with wl-clipboard installed: the tools then
/// reach the selections. Qt cannot tell having the keyboard focus apart from having an
/// active window (compositors activate a new window without giving it the keyboard), and
/// without the focus it reads nothing, or what was selected when it last had it.
bool inCharge();

/// The selection's text and file-list types, in the order offered, as one item (a file
/// list as one item per file); empty when it holds nothing or cannot be read.
QList<PasteboardItem> read(SelectionSource source);

/// Puts the text on the clipboard as UTF-8 plain text. wl-copy keeps offering it after
/// this process has ended. False when that could not be done.
bool copyText(const QString& text);

} // namespace tallyvox::waylandClipboard
