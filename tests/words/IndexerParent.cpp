// Stands in for the application in IndexerClientTest: runs the indexers of a folder on one
// file, so that the test can kill it while it waits. Arguments: indexer folder, temporary
// folder, input file.

#include "prefs/PreferenceStore.h"
#include "tests/common/RecordingDesktop.h"
#include "words/IndexerClient.h"
#include "words/ProcessIndexer.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4) {
        return 2;
    }
    tallyvox::testing::RecordingDesktop desktop;
    const tallyvox::PreferenceStore preferences;
    tallyvox::ProcessIndexer indexer(desktop, {arguments.at(1), arguments.at(2)});
    const tallyvox::WordContext context{desktop, preferences, indexer, arguments.at(2)};
    const std::optional<tallyvox::FileRef> file = tallyvox::FileRef::fromPath(arguments.at(3));
    if (!file) {
        return 1;
    }
    const std::unique_ptr<tallyvox::WordTableJob> job = tallyvox::BuildWordTable(context, *file);
    QObject::connect(job.get(), &tallyvox::WordTableJob::finished, &app,
                     [&] { app.exit(job->table().isEmpty() ? 1 : 0); });
    return QCoreApplication::exec();
}
