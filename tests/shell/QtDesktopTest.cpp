#include "shell/QtDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

// Answers the Open dialog once it shows: notes the folder it starts in, then chooses the
// named file, or cancels for none.
struct OpenDialogAnswer {
    QString startFolder;

    void answerNext(const QString& file)
    {
        QTimer::singleShot(0, [this, file] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            if (!dialog) {
                answerNext(file);
                return;
            }
            startFolder = dialog->directory().absolutePath();
            if (file.isEmpty()) {
                dialog->reject();
                return;
            }
            dialog->selectFile(file);
            QMetaObject::invokeMethod(dialog, "accept");
        });
    }
};

} // namespace

class QtDesktopTest : public QObject {
    Q_OBJECT

private slots:
    // An alert that comes while another application has the focus (a service's result)
    // is kept above the other windows, so it never waits unseen behind them.
    void anAlertForAnInactiveApplicationStaysOnTop_data()
    {
        QTest::addColumn<bool>("active");
        // In this order: offscreen, an application once active stays so.
        QTest::newRow("another application in front") << false;
        QTest::newRow("Tallyvox in front") << true;
    }
    void anAlertForAnInactiveApplicationStaysOnTop()
    {
        QFETCH(bool, active);
        QtDesktop desktop;
        QWidget window;
        desktop.setWindow(&window);
        if (active) {
            window.show();
            window.activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(&window));
        }
        QTRY_COMPARE(QGuiApplication::applicationState() == Qt::ApplicationActive, active);
        bool onTop = active; // the wrong answer until the box is seen
        QString text;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box);
            text = box->text();
            onTop = box->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
            box->buttons().constFirst()->click();
        });
        desktop.alert(u"Word count: 3"_s);
        QCOMPARE(text, u"Word count: 3"_s);
        QCOMPARE(onTop, !active);
    }
    // The Open dialog starts in the home folder, not in the folder the program was started
    // in, and later where the user last chose files; a cancel changes nothing.
    void openDialogStartsAtHomeThenWhereFilesWereChosen()
    {
        testing::TestEnvironment env;
        QVERIFY(QDir().mkpath(env.home()));
        const QString chosen = env.writeFile(u"papers/a.txt"_s, "a");
        QVERIFY(QDir::setCurrent(env.root()));
        QtDesktop desktop;
        OpenDialogAnswer answer;

        answer.answerNext(chosen);
        QCOMPARE(desktop.chooseFilesToOpen(u"Select"_s), QStringList{chosen});
        QCOMPARE(answer.startFolder, QDir(env.home()).absolutePath());

        answer.answerNext(QString());
        QCOMPARE(desktop.chooseFilesToOpen(u"Select"_s), QStringList());
        QCOMPARE(answer.startFolder, env.root() + u"/papers"_s);

        // A folder that has gone sends the dialog home again.
        QVERIFY(QDir(env.root() + u"/papers"_s).removeRecursively());
        answer.answerNext(QString());
        desktop.chooseFilesToOpen(u"Select"_s);
        QCOMPARE(answer.startFolder, QDir(env.home()).absolutePath());
    }
};

QTEST_MAIN(QtDesktopTest)
#include "QtDesktopTest.moc"
