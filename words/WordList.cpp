#include "words/WordList.h"

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "words/OutputFolder.h"
#include "words/WordListRenderer.h"

namespace tallyvox {

namespace {

// The output path buffer of the word list; the conversion fails beyond 4095 bytes.
constexpr int outputPathBufferSize = 4096;

Status notWritten(Desktop& desktop, const QString& listName, Status status)
{
    desktop.log(QStringLiteral("The word list \"%1\" could not be written (error %2)")
                    .arg(listName)
                    .arg(status));
    return status;
}

} // namespace

Status writeWordList(const WordContext& context, const FileRef& file, const QString& name)
{
    const QString listName = name + QStringLiteral(".txt");
    std::optional<FileRef> output;
    if (const Status status = CreateOutputFile(listName, output); status != noErr || !output) {
        return notWritten(context.desktop, listName, status != noErr ? status : fnfErr);
    }

    const PreferenceStore& preferences = context.preferences;
    const LineStyle lineStyle = preferences.GetLineStyle();
    const SeparateBy separateBy = preferences.GetSeparateBy();
    const bool alphabetical = preferences.GetSortBy() == SortBy::Alphabetical;
    const std::optional<QString> text =
        RenderWordList(context, file, lineStyle, separateBy, alphabetical);
    // No words: the empty list stays where it is, and nothing is opened.
    if (!text) {
        return noErr;
    }

    QByteArray pathBytes;
    if (const Status status = output->makePath(pathBytes, outputPathBufferSize); status != noErr) {
        return notWritten(context.desktop, listName, status);
    }
    // Whole or not at all: a failed write leaves the empty list made above.
    if (const Status status = replaceFileContents(*output, text->toUtf8()); status != noErr) {
        return notWritten(context.desktop, listName, status);
    }
    OpenInTextEditor(context.desktop, *output);
    context.desktop.raiseApplication();
    return noErr;
}

} // namespace tallyvox
