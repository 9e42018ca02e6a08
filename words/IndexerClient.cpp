#include "words/IndexerClient.h"

#include "support/Desktop.h"
#include "words/WordTableReader.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFileInfo>
#include <QProcess>
#include <QStringDecoder>

namespace tallyvox {

namespace {

// The indexer takes the path as it is handed over; the deliberately small buffer
// keeps the longest path it ever sees at 254 bytes.
constexpr int indexerPathBufferSize = 255;

} // namespace

QString defaultIndexerDirectory()
{
    return QCoreApplication::applicationDirPath() + QStringLiteral("/" TALLYVOX_LIBEXEC_RELATIVE);
}

std::optional<WordTable> RunIndexer(const WordContext& context, const QString& posixPath,
                                    const QString& executableName)
{
    QProcess process;
    process.setProgram(context.indexerDirectory + QLatin1Char('/') + executableName);
    process.setArguments({posixPath});
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("TMPDIR"), context.temporaryFolder);
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);

    // A nested loop rather than a blocking wait, so that stop and quit commands
    // still arrive while a long document is indexed.
    QEventLoop loop;
    bool failedToStart = false;
    QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
    QObject::connect(&process, &QProcess::errorOccurred, &loop, [&](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            failedToStart = true;
            loop.quit();
        }
    });
    process.start();
    if (!failedToStart && process.state() != QProcess::NotRunning) {
        loop.exec();
    }
    // A missing indexer counts as no result, so the fallback gets its turn.
    if (failedToStart) {
        return std::nullopt;
    }

    const QString resultPath =
        context.temporaryFolder + QLatin1Char('/') + QLatin1String(resultFileName);
    if (!QFileInfo::exists(resultPath)) {
        return std::nullopt;
    }
    return ReadWordTableFile(resultPath);
}

WordTable BuildWordTable(const WordContext& context, const FileRef& file)
{
    WordTable table;
    QByteArray pathBytes;
    if (file.makePath(pathBytes, indexerPathBufferSize) != noErr) {
        return table;
    }

    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString path = utf8.decode(pathBytes);
    if (utf8.hasError()) {
        return table;
    }

    context.desktop.log(QStringLiteral("Indexing ") + path);
    std::optional<WordTable> result = RunIndexer(context, path, QStringLiteral("SearchKitIndexer"));
    if (!result) {
        result = RunIndexer(context, path, QStringLiteral("SearchKitIndexer32"));
    }
    if (result) {
        table = std::move(*result);
    }
    return table;
}

} // namespace tallyvox
