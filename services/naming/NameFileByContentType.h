#pragma once

#include "services/naming/FixedString.h"
#include "services/naming/StringMap.h"
#include "support/FileRef.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtGlobal>

#include <optional>
#include <vector>

namespace tallyvox {

class Desktop;

/// One image format Qt can write, as the naming code looks it up by MIME type.
struct ExporterRecord {
    quint32 fileType = 0;      ///< four characters made from the format's name
    char fileTypeText[5] = {}; ///< the same four characters, NUL-terminated
    QString fileTypeString;
    char description[256] = {}; ///< the MIME type's description (UTF-8)
    QString descriptionString;
    char extension[256] = {}; ///< without a leading dot
    QString extensionString;
    char mimeType[256] = {};
    QString mimeTypeString;
};

/// The exporters loaded by LoadGraphicExporters; empty until it is called.
const std::vector<ExporterRecord>& ExporterTable();

/// Fills the exporter table from Qt's image writers, one record for each MIME type they
/// list, logs the loading lines through the desktop and returns the number of records.
qint16 LoadGraphicExporters(Desktop& desktop);

/// MIME type to extension (with its dot), filled only from exporter-table matches.
StringMap& MimeExtensionCache();

/// The MIME types that Qt's image plugins list for the format found in the file's
/// content (its name is not looked at); empty when no plugin reads it.
QList<QByteArray> ImageMimeTypesOfFile(const QString& path);

/// The extension for a file whose content has these MIME types: every type is looked up
/// (cache, exporter table, then the extension map) and the last one that matched wins;
/// ".jfif" becomes ".jpg". Nothing when no type matched.
std::optional<FixedString> ExtensionForMimeTypes(const QList<QByteArray>& mimeTypes);

/// Renames a just-written file so that its name ends in the extension of its content
/// type, keeping any old extension that differs ("photo.dat" becomes "photo.dat.jpg").
/// The new name is cut to 127 UTF-16 units. True exactly when the rename succeeded; then
/// renamed refers to the file under its new name and file managers have been told.
bool NameFileByContentType(Desktop& desktop, const FileRef& file, std::optional<FileRef>& renamed);

} // namespace tallyvox
