#include "words/WordList.h"

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "words/OutputFolder.h"
#include "words/WordListRenderer.h"

#include <QFile>

namespace tallyvox {

namespace {

// The output path buffer of the word list; the conversion fails beyond 4095 bytes.
constexpr int outputPathBufferSize = 4096;

} // namespace

void writeWordList(const WordContext& context, const FileRef& file, const QString& name)
{
    std::optional<FileRef> output;
    if (CreateOutputFile(name + QStringLiteral(".txt"), output) != noErr || !output) {
        return;
    }

    const PreferenceStore& preferences = context.preferences;
    const LineStyle lineStyle = preferences.GetLineStyle();
    const SeparateBy separateBy = preferences.GetSeparateBy();
    const bool alphabetical = preferences.GetSortBy() == SortBy::Alphabetical;
    const std::optional<QString> text =
        RenderWordList(context, file, lineStyle, separateBy, alphabetical);
    // No words: the empty list stays where it is, and nothing is opened.
    if (!text) {
        return;
    }

    QByteArray pathBytes;
    if (output->makePath(pathBytes, outputPathBufferSize) != noErr) {
        return;
    }
    QFile out(QFile::decodeName(pathBytes));
    const QByteArray utf8 = text->toUtf8();
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate) || out.write(utf8) != utf8.size()) {
        return;
    }
    out.close();
    OpenInTextEditor(context.desktop, *output);
    context.desktop.raiseApplication();
}

} // namespace tallyvox
