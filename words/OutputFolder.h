#pragma once

#include "support/FileRef.h"
#include "support/Status.h"

#include <QString>

#include <optional>

namespace tallyvox {

class Desktop;

/// The maker folder "Okaluna Software" in the user's data folder, made when missing. True
/// when it is there or was made; outFolder then refers to it unless it could not be
/// looked at (a lookup error other than "not found" counts as present).
bool FindOrCreateMakerFolder(std::optional<FileRef>& outFolder);

/// The output folder "Tallyvox" inside the maker folder, made when missing; noErr when
/// outFolder refers to it.
Status FindOrCreateOutputFolder(std::optional<FileRef>& outFolder);

/// A new, empty file fileName in the output folder, replacing (by deleting) any item of
/// that name. When the old item cannot be deleted, its status is returned and it stays.
Status CreateOutputFile(const QString& fileName, std::optional<FileRef>& outFile);

/// The folder of the lists of several files, inside the output folder. Its name has no
/// extension, while every file's own list ends in ".txt", ".csv" or ".tsv", so it is never
/// the name of one.
inline constexpr char combinedListFolder[] = "Combined";

/// Like CreateOutputFile, in combinedListFolder, which is made when missing.
Status createCombinedListFile(const QString& fileName, std::optional<FileRef>& outFile);

/// Replaces the content of file by bytes, never through a link. On failure (a full disk)
/// the file is left empty, never with a part of them.
Status replaceFileContents(const FileRef& file, const QByteArray& bytes);

/// Hands the file to the user's text editor; whatever happens is not reported.
void OpenInTextEditor(Desktop& desktop, const FileRef& file);

} // namespace tallyvox
