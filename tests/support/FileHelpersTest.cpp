#include "support/FileHelpers.h"
#include "support/FileRefPaths.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace tallyvox;

class FileHelpersTest : public QObject {
    Q_OBJECT

private slots:
    void itemName()
    {
        testing::TestEnvironment env;
        const auto ref = FileRef::fromPath(env.writeFile(QStringLiteral("Report.pdf"), "x"));
        QVERIFY(ref);
        QCOMPARE(GetItemName(*ref, nullptr), paramErr);
        QString name;
        QCOMPARE(GetItemName(*ref, &name), noErr);
        QCOMPARE(name, QStringLiteral("Report.pdf"));

        QFile::remove(ref->path());
        QCOMPARE(GetItemName(*ref, &name), fnfErr);
    }

    void nodeIdAndDirectory_data()
    {
        QTest::addColumn<bool>("directory");
        QTest::newRow("file") << false;
        QTest::newRow("directory") << true;
    }
    void nodeIdAndDirectory()
    {
        QFETCH(bool, directory);
        testing::TestEnvironment env;
        const QString path = directory ? env.home() : env.writeFile(QStringLiteral("f"), "x");
        const auto ref = FileRef::fromPath(path);
        QVERIFY(ref);

        // Asking for nothing still reaches the item.
        QCOMPARE(GetNodeIDAndIsDirectory(*ref, nullptr, nullptr), noErr);
        quint32 nodeID = 0;
        bool isDirectory = !directory;
        QCOMPARE(GetNodeIDAndIsDirectory(*ref, &nodeID, &isDirectory), noErr);
        QCOMPARE(isDirectory, directory);
        QVERIFY(nodeID != 0);

        QVERIFY(directory ? QDir(path).removeRecursively() : QFile::remove(path));
        QCOMPARE(GetNodeIDAndIsDirectory(*ref, nullptr, nullptr), fnfErr);
    }

    void finderUpdateTellsTheDesktop()
    {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        const auto ref = FileRef::fromPath(env.writeFile(QStringLiteral("a b.png"), "x"));
        QCOMPARE(FinderUpdateItem(desktop, *ref), noErr);
        QCOMPARE(desktop.texts(QStringLiteral("filesChanged")), QStringList{ref->path()});
    }

    void pathsAndReferences()
    {
        testing::TestEnvironment env;
        QVERIFY(!stringWithFSRef(nullptr));
        const QString path = env.writeFile(QStringLiteral("dir/n\u00e4me.txt"), "x");
        const std::optional<FileRef> ref = getFSRef(path);
        QVERIFY(ref);
        QCOMPARE(stringWithFSRef(&*ref), std::optional<QString>(path));
        QVERIFY(getFSRef(env.root() + QStringLiteral("/dir"))); // folders too
        QVERIFY(!getFSRef(env.root() + QStringLiteral("/missing")));
        QVERIFY(!getFSRef(QString()));
    }
};

QTEST_GUILESS_MAIN(FileHelpersTest)
#include "FileHelpersTest.moc"
