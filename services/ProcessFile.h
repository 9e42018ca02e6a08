#pragma once

#include "support/FileRef.h"
#include "support/Translation.h"
#include "words/FileJob.h"
#include "words/WordContext.h"

#include <QString>

#include <memory>
#include <optional>

namespace tallyvox {

class WordListRun;

/// The operation applied to one input. Scoped, because the services share some of these
/// names with the operations they stand for (SaveGraphicData, SpellOutNumber). Any 32-bit
/// value may be passed; ProcessFile acts on 1 to 4 only.
enum class ProcessMode : qint32 {
    ExtractWords = 1,
    WordCount = 2,
    CharCount = 3,
    DecodeBase64 = 4,
    SpellOutNumber = 5,
    SaveGraphicData = 6,
};

/// The largest file that decodeBase64 reads: it is read whole, and its text takes several
/// times its size in memory.
inline constexpr qint64 largestFileReadAsText = qint64{32} * 1024 * 1024;

/// Applies mode to an existing file, as a job to start and then commit: it writes and
/// opens the file's word list, shows its word or character count, or decodes its text as
/// Base64 and saves the result. Nothing for other modes and for files whose name cannot be
/// read. Failures show nothing; a job's commit status is that of a word list that could
/// not be written (logged), else noErr. run: the batch run a word list belongs to.
std::unique_ptr<FileJob> ProcessFile(const WordContext& context, const FileRef& file,
                                     ProcessMode mode, WordListRun* run = nullptr);

/// Reads the file as text (detected encoding, then UTF-8, ISO Latin 1, Mac OS Roman) and
/// hands it to decode-and-save; nothing happens when no reading works. A file larger than
/// largestFileReadAsText gets an alert instead.
void DecodeBase64File(Desktop& desktop, const FileRef& file);

/// The file's bytes as text in the first encoding that reads them all: the one detected
/// from the content, UTF-8, ISO Latin 1, then Mac OS Roman. Nothing for anything but a
/// regular file of at most largestFileReadAsText bytes.
std::optional<QString> ReadFileAsText(const QString& path);

/// The alert for a file too large to decode.
inline constexpr char16_t fileTooLargeMessage[] = TALLYVOX_TRANSLATE_NOOP(
    "tallyvox::ProcessFile",
    "The file \"%1\" is too large to decode: Tallyvox decodes files of up to 32 MB.");

} // namespace tallyvox
