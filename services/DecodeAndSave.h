#pragma once

#include <QString>

namespace tallyvox {

class Desktop;

/// Decodes Base64 text and saves the bytes where the user says (proposing
/// "DecodedBase64"), names the file by its content and opens it under its final name.
/// Alerts when the text cannot be decoded, and (a failure) when the file cannot be written;
/// a link, a named pipe or a folder at the chosen path is refused, never written through.
void DecodeAndSaveBase64(Desktop& desktop, const QString& text);

/// Saves text as UTF-8 where the user says (proposing "Graphic"), names the file by its
/// content, then opens the chosen path, whether or not the rename worked. A failed or refused
/// write is a failure alert, and nothing is opened.
void SaveGraphicData(Desktop& desktop, const QString& text);

} // namespace tallyvox
