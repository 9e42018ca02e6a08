// Stands in for the application in IndexerClientTest: runs the indexers of a folder on one
// file, so that the test can kill it while it waits. Arguments: indexer folder, temporary
// folder, input file.

#include "prefs/PreferenceStore.h"
#include "tests/common/RecordingDesktop.h"
#include "words/IndexerClient.h"

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
    const tallyvox::WordContext context{desktop, preferences, arguments.at(1), arguments.at(2)};
    const std::optional<tallyvox::FileRef> file = tallyvox::FileRef::fromPath(arguments.at(3));
    return file && !tallyvox::BuildWordTable(context, *file).isEmpty() ? 0 : 1;
}
