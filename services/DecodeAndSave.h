#pragma once

#include <QString>

namespace tallyvox {

class Desktop;

/// Decodes Base64 text and saves the bytes where the user says (proposing
/// "DecodedBase64"), names the file by its content and opens it under its final name.
/// Alerts when the text cannot be decoded; a failed write stays silent and opens nothing.
void DecodeAndSaveBase64(Desktop& desktop, const QString& text);

/// Saves text as UTF-8 where the user says (proposing "Graphic"), names the file by its
/// content, then opens the chosen path, whether or not the write or the rename worked.
void SaveGraphicData(Desktop& desktop, const QString& text);

} // namespace tallyvox
