#pragma once

#include "support/Desktop.h"
#include "support/FileRef.h"
#include "support/Status.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace tallyvox {

/// What a service request hands over: items in order, each its MIME types in order with
/// their bytes. The reading routines number the items from 1.
using Pasteboard = QList<PasteboardItem>;

/// The MIME types the services read and write.
namespace flavors {
inline constexpr char fileUrl[] = "text/uri-list";
inline constexpr char gnomeCopiedFiles[] = "x-special/gnome-copied-files";
inline constexpr char utf8PlainText[] = "text/plain;charset=utf-8";
inline constexpr char utf16ExternalPlainText[] = "text/plain;charset=utf-16";
inline constexpr char utf16PlainText[] = "text/plain;charset=utf-16le";
inline constexpr char text[] = "text/plain";
} // namespace flavors

/// The bytes of one flavor of item index (from 1), or nothing when the item does not
/// exist or lacks the flavor. X11 target names count as their MIME types (UTF8_STRING
/// as UTF-8 plain text, STRING and TEXT as generic text); letter case and blanks around
/// parameters do not matter.
std::optional<QByteArray> copyItemFlavorData(const Pasteboard& pasteboard, qsizetype index,
                                             const char* flavor);

/// The first item's file URL (text/uri-list) resolved to an existing file; false when
/// there is none, it is empty, or it names nothing that exists.
bool ReadFileURLFromPasteboard(const Pasteboard& pasteboard, std::optional<FileRef>& outRef);

/// The text of the first item that has one of the four text flavors (UTF-8, UTF-16 with
/// byte-order mark, UTF-16 in host order, generic text, in that order). The bytes are read
/// as UTF-8 whatever the flavor, and as host-order UTF-16 only when they are not valid
/// UTF-8. Nothing for no such item or empty data.
std::optional<QString> ReadTextFromPasteboard(const Pasteboard& pasteboard);

/// Replaces the clipboard's content with the text (as UTF-8 plain text).
Status PutTextOnClipboard(Desktop& desktop, const QString& text);

/// A pasteboard holding one item of UTF-8 plain text.
Pasteboard pasteboardWithText(const QString& text);

/// A pasteboard holding bytes of unknown encoding as generic text.
Pasteboard pasteboardWithBytes(const QByteArray& bytes);

/// A pasteboard holding one file URL.
Pasteboard pasteboardWithFile(const QString& path);

} // namespace tallyvox
