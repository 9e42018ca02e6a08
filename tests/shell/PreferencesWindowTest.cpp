#include "shell/PreferencesWindow.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;
using namespace Qt::StringLiterals;

namespace {

template <class Control>
Control* control(PreferencesWindow& window, const char* id)
{
    return window.findChild<Control*>(QLatin1String(id));
}

} // namespace

class PreferencesWindowTest : public QObject {
    Q_OBJECT

private slots:
    void popUpItemsInTheirOrder()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        PreferencesWindow window(store);
        const auto items = [&](const char* id) {
            QStringList texts;
            for (int i = 0; i < control<QComboBox>(window, id)->count(); ++i) {
                texts.append(control<QComboBox>(window, id)->itemText(i));
            }
            return texts;
        };
        // Item n stands for the stored number n.
        QCOMPARE(items(preferencesControls::SortBy).size(), 2);
        QCOMPARE(items(preferencesControls::SeparateBy),
                 (QStringList{u"word (3)"_s, u"word, tab, 3"_s, u"word,3"_s}));
        QCOMPARE(items(preferencesControls::LineStyle),
                 (QStringList{u"New line (LF)"_s, u"Carriage return (CR)"_s, u"CR and LF"_s,
                              u"Space"_s, u"Comma"_s}));
    }

    void loadsWhatIsStored_data()
    {
        QTest::addColumn<bool>("includeFrequency");
        QTest::addColumn<int>("lineStyle");
        QTest::addColumn<int>("lineIndex");
        QTest::newRow("defaults") << true << 1 << 0;
        QTest::newRow("counts off") << false << 5 << 4;
        // A number no item stands for pins the pop-up to its nearest end.
        QTest::newRow("beyond the items") << true << 7 << 4;
        QTest::newRow("below the items") << true << -3 << 0;
    }
    void loadsWhatIsStored()
    {
        QFETCH(bool, includeFrequency);
        QFETCH(int, lineStyle);
        QFETCH(int, lineIndex);
        testing::TestEnvironment env;
        PreferenceStore store;
        store.writeBool(prefs::IncludeFrequency, includeFrequency);
        store.writeChoice(prefs::LineStyle, static_cast<qint16>(lineStyle));
        PreferencesWindow window(store);
        window.loadFromStore();
        QCOMPARE(control<QCheckBox>(window, preferencesControls::IncludeFrequency)->isChecked(),
                 includeFrequency);
        QCOMPARE(control<QComboBox>(window, preferencesControls::SeparateBy)->isEnabled(),
                 includeFrequency);
        QCOMPARE(control<QComboBox>(window, preferencesControls::LineStyle)->currentIndex(),
                 lineIndex);
    }

    void eachChangeIsWrittenAtOnceAndPassedOn()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        store.writeBool(prefs::IncludeFrequency, false);
        PreferencesWindow window(store);
        window.loadFromStore();
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        // Clicks a box or chooses an item as the user does; the window's owner hands each
        // command back to the window first.
        const auto change = [&](const char* id, int item = -1) {
            if (item < 0) {
                control<QCheckBox>(window, id)->click();
            } else {
                control<QComboBox>(window, id)->setCurrentIndex(item);
                emit control<QComboBox>(window, id)->activated(item);
            }
            return window.handleCommand(issued.takeLast().first().value<CommandId>());
        };
        auto* separator = control<QComboBox>(window, preferencesControls::SeparateBy);
        QCOMPARE(change(preferencesControls::IncludeFrequency), eventNotHandledErr);
        QVERIFY(separator->isEnabled());
        QCOMPARE(store.GetIncludeFrequency(), true);
        QCOMPARE(change(preferencesControls::LineStyle, 2), eventNotHandledErr);
        QCOMPARE(change(preferencesControls::SortBy, 1), eventNotHandledErr);
        QCOMPARE(change(preferencesControls::SeparateBy, 2), eventNotHandledErr);
        QCOMPARE(change(preferencesControls::QuitWhenDone), eventNotHandledErr);
        QCOMPARE(change(preferencesControls::IncludeFrequency), eventNotHandledErr);
        QVERIFY(!separator->isEnabled());
        QCOMPARE(store.GetLineStyle(), LineStyle::CarriageReturnLineFeed);
        QCOMPARE(store.GetSortBy(), SortBy::ByFrequency);
        QCOMPARE(store.GetSeparateBy(), SeparateBy::Comma);
        QCOMPARE(store.GetQuitWhenDone(), true);
        QCOMPARE(store.GetIncludeFrequency(), false);
    }

    void closingCommands_data()
    {
        QTest::addColumn<QByteArray>("code");
        QTest::addColumn<bool>("closes");
        for (const char* code : {"clos", "not!", "ok  "}) {
            QTest::newRow(code) << QByteArray(code) << true;
        }
        for (const char* code : {"quit", "pref"}) {
            QTest::newRow(code) << QByteArray(code) << false;
        }
    }
    void closingCommands()
    {
        QFETCH(QByteArray, code);
        QFETCH(bool, closes);
        testing::TestEnvironment env;
        PreferenceStore store;
        PreferencesWindow window(store);
        window.show();
        QSignalSpy closed(&window, &PreferencesWindow::closed);
        QCOMPARE(window.handleCommand(CommandId::fromChars(code.constData())),
                 closes ? noErr : eventNotHandledErr);
        QCOMPARE(closed.size(), closes ? 1 : 0);
        QCOMPARE(window.isVisible(), !closes);
    }

    void closeBoxSendsClos()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        PreferencesWindow window(store);
        window.show();
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        window.close();
        QCOMPARE(issued.size(), 1);
        QCOMPARE(issued.first().first().value<CommandId>(), commands::Close);
    }
};

QTEST_MAIN(PreferencesWindowTest)
#include "PreferencesWindowTest.moc"
