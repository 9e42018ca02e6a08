#include "shell/PreferencesWindow.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
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
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
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
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
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
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
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
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
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
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        window.show();
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        window.close();
        QCOMPARE(issued.size(), 1);
        QCOMPARE(issued.first().first().value<CommandId>(), commands::Close);
    }

    // The word-list options, their own group of controls.

    void wordListOptionsLoadWhatIsStored_data()
    {
        QTest::addColumn<QByteArray>("plist"); // the body of the stored dictionary
        QTest::addColumn<QString>("controls");
        QTest::newRow("nothing stored") << QByteArray() << u"0 0 0 0 | 1 | [] | 0"_s;
        QTest::newRow("all on") << "<key>FoldCase</key><true/><key>DictionaryOrder</key><true/>"
                                   "<key>CombineFiles</key><true/><key>IncludeTotals</key><true/>"
                                   "<key>MinimumCount</key><integer>70000</integer>"
                                   "<key>StopListPath</key><string>/home/me/stop.txt</string>"
                                   "<key>ListFormat</key><integer>2</integer>"_ba
                                << u"1 1 1 1 | 70000 | [/home/me/stop.txt] | 2"_s;
        // Below 1 keeps every word, as 1 does; a number naming no format is the text.
        QTest::newRow("out of their range")
            << "<key>MinimumCount</key><integer>-5</integer><key>ListFormat</key>"
               "<integer>9</integer>"_ba
            << u"0 0 0 0 | 1 | [] | 0"_s;
    }
    void wordListOptionsLoadWhatIsStored()
    {
        QFETCH(QByteArray, plist);
        QFETCH(QString, controls);
        testing::TestEnvironment env;
        env.writeFile(u"config/Okaluna Software/Tallyvox.plist"_s,
                      "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>" + plist +
                          "</dict></plist>");
        PreferenceStore store;
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        window.loadFromStore();
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        window.loadFromStore(); // loading is no change of the user's
        QStringList boxes;
        for (const char* id :
             {preferencesControls::FoldCase, preferencesControls::DictionaryOrder,
              preferencesControls::CombineFiles, preferencesControls::IncludeTotals}) {
            boxes.append(QString::number(control<QCheckBox>(window, id)->isChecked()));
        }
        QCOMPARE(
            u"%1 | %2 | [%3] | %4"_s.arg(boxes.join(u' '))
                .arg(control<QSpinBox>(window, preferencesControls::MinimumCount)->value())
                .arg(control<QLineEdit>(window, preferencesControls::StopListPath)->text())
                .arg(control<QComboBox>(window, preferencesControls::ListFormat)->currentIndex()),
            controls);
        QCOMPARE(issued.size(), 0);
    }

    void eachWordListOptionIsWrittenAtOnce()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        window.loadFromStore();
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        // What the user's change sent, handed back to the window as its owner does.
        const auto handleIssued = [&] {
            return window.handleCommand(issued.takeLast().first().value<CommandId>());
        };
        for (const char* id :
             {preferencesControls::FoldCase, preferencesControls::DictionaryOrder,
              preferencesControls::CombineFiles, preferencesControls::IncludeTotals}) {
            control<QCheckBox>(window, id)->click();
            QCOMPARE(handleIssued(), eventNotHandledErr);
        }
        auto* minimum = control<QSpinBox>(window, preferencesControls::MinimumCount);
        minimum->setFocus();
        QTest::keyClick(minimum, Qt::Key_Up);
        QCOMPARE(handleIssued(), eventNotHandledErr);
        auto* path = control<QLineEdit>(window, preferencesControls::StopListPath);
        QTest::keyClicks(path, u"~/s"_s);
        QCOMPARE(issued.size(), 3); // one a keystroke
        QCOMPARE(handleIssued(), eventNotHandledErr);
        auto* format = control<QComboBox>(window, preferencesControls::ListFormat);
        format->setCurrentIndex(1);
        emit format->activated(1);
        QCOMPARE(handleIssued(), eventNotHandledErr);

        QVERIFY(store.readBool(prefs::FoldCase));
        QVERIFY(store.readBool(prefs::DictionaryOrder));
        QVERIFY(store.readBool(prefs::CombineFiles));
        QVERIFY(store.readBool(prefs::IncludeTotals));
        QCOMPARE(store.readInteger(prefs::MinimumCount), 2);
        QCOMPARE(store.readString(prefs::StopListPath), u"~/s"_s);
        QCOMPARE(store.readInteger(prefs::ListFormat), 1);
        // The design's five keep their defaults.
        QCOMPARE(store.GetIncludeFrequency(), true);
        QCOMPARE(store.GetSortBy(), SortBy::Alphabetical);
        QCOMPARE(store.GetQuitWhenDone(), false);
    }

    void stopListIsChosenInTheOpenPanel_data()
    {
        QTest::addColumn<QStringList>("answer");
        QTest::addColumn<QString>("stored");
        QTest::newRow("chosen") << QStringList{u"/home/me/stop.txt"_s, u"/home/me/b"_s}
                                << u"/home/me/stop.txt"_s;
        QTest::newRow("cancelled") << QStringList() << u"/old.txt"_s;
    }
    void stopListIsChosenInTheOpenPanel()
    {
        QFETCH(QStringList, answer);
        QFETCH(QString, stored);
        testing::TestEnvironment env;
        PreferenceStore store;
        store.writeString(prefs::StopListPath, u"/old.txt"_s);
        testing::RecordingDesktop desktop;
        desktop.answerOpenPanel(answer);
        PreferencesWindow window(store, desktop);
        window.loadFromStore();
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        control<QPushButton>(window, preferencesControls::ChooseStopList)->click();
        QCOMPARE(window.handleCommand(issued.takeLast().first().value<CommandId>()),
                 eventNotHandledErr);
        QCOMPARE(desktop.texts(u"openPanel"_s),
                 QStringList{QString::fromUtf16(chooseStopListPrompt)});
        QCOMPARE(store.readString(prefs::StopListPath), stored);
        QCOMPARE(control<QLineEdit>(window, preferencesControls::StopListPath)->text(), stored);
    }

    void everyWordListOptionHasATooltip()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        for (const char* id :
             {preferencesControls::FoldCase, preferencesControls::DictionaryOrder,
              preferencesControls::MinimumCount, preferencesControls::StopListPath,
              preferencesControls::ChooseStopList, preferencesControls::CombineFiles,
              preferencesControls::ListFormat, preferencesControls::IncludeTotals}) {
            QWidget* widget = control<QWidget>(window, id);
            QVERIFY2(widget && !widget->toolTip().isEmpty(), id);
            QVERIFY2(commandOf(*widget).code != 0, id);
        }
    }
};

QTEST_MAIN(PreferencesWindowTest)
#include "PreferencesWindowTest.moc"
