#include "shell/WorkGate.h"
#include "prefs/PreferenceStore.h"
#include "services/Pasteboard.h"
#include "shell/BatchRunner.h"
#include "shell/BatchView.h"
#include "shell/ServiceRequests.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

class SilentView final : public BatchView {
public:
    void showStatus(const QString&, StatusTarget) override {}
    void setRunning(bool) override {}
    void setProgressMaximum(int) override {}
    void setProgressMinimum(int) override {}
    void setProgressValue(int) override {}
    void setProgressVisible(bool) override {}
    void showErrorWindow(const QString&) override {}
};

} // namespace

/// The batch run and service requests share one gate: neither starts inside the other's
/// wait. What happened is one list: "file NAME" for each file, alerts as they come.
class WorkGateTest : public QObject {
    Q_OBJECT

    struct World {
        testing::TestEnvironment env;
        testing::RecordingDesktop desktop;
        SilentView view;
        PreferenceStore store;
        WorkGate gate;
        QStringList happened;
        std::function<void()> duringFirstFile;
        BatchRunner batch{view, desktop, store,
                          [this](const FileRef& file) {
                              events();
                              happened.append(u"file "_s + file.name());
                              if (const auto during = std::exchange(duringFirstFile, nullptr)) {
                                  during();
                                  // As the indexer's wait does: events keep flowing.
                                  QTest::qWait(50);
                              }
                              events();
                          },
                          &gate};
        ServiceActions actions{{{desktop, store, {}, env.tempFolder()}, {}}, &gate};

        void countCharacters(const QString& text)
        {
            actions.queueRequest(u"charCount"_s, pasteboardWithText(text),
                                 SelectionSource::Primary);
        }
        QStringList events()
        {
            for (const QString& alert : desktop.alerts()) {
                happened.append(alert);
            }
            desktop.clear();
            return happened;
        }
    };

private slots:
    void serviceDuringABatchRunWaitsForItsEnd()
    {
        World w;
        // The request arrives while the first file waits for its indexer.
        w.duringFirstFile = [&w] { w.countCharacters(u"hello"_s); };
        QSignalSpy ended(&w.batch, &BatchRunner::runEnded);
        w.batch.queueDocuments(
            {w.env.writeFile(u"a.txt"_s, "a"), w.env.writeFile(u"b.txt"_s, "b")});
        QVERIFY(ended.wait(2000));
        QTRY_COMPARE(w.events(),
                     (QStringList{u"file a.txt"_s, u"file b.txt"_s, u"Character count: 5"_s}));
    }

    void batchDueDuringAServiceWaitsForIt()
    {
        World w;
        QVERIFY(w.gate.tryEnter()); // a service's alert is open
        w.batch.queueDocuments({w.env.writeFile(u"a.txt"_s, "a")});
        QTest::qWait(50);
        QCOMPARE(w.events(), QStringList());
        w.gate.leave();
        QTRY_COMPARE(w.events(), QStringList{u"file a.txt"_s});
        QVERIFY(!w.gate.isTaken());
    }
};

QTEST_GUILESS_MAIN(WorkGateTest)
#include "WorkGateTest.moc"
