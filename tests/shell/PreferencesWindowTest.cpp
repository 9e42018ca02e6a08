#include "shell/PreferencesWindow.h"
#include "prefs/PreferenceStore.h"
#include "shell/AccessibleComboBox.h"
#include "tests/common/RecordingDesktop.h"
#include "tests/common/TestEnvironment.h"

#include <QAbstractItemView>
#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
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

// The word-list options' check boxes, in the order of their keys.
const std::array optionBoxes{
    preferencesControls::FoldCase,     preferencesControls::DictionaryOrder,
    preferencesControls::CombineFiles, preferencesControls::IncludeTotals,
    preferencesControls::IncludeRange, preferencesControls::IncludePerMillion};

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

    // Esc and Ctrl+W end the window as its close box does; a Close button where the
    // desktop's dialogs have one (not on GNOME, whose preferences close from the title bar).
    void keysAndTheCloseButtonCloseTheWindow_data()
    {
        QTest::addColumn<QString>("desktopName");
        QTest::addColumn<QString>("how");
        QTest::addColumn<bool>("hasButton");
        QTest::newRow("Esc") << u"KDE"_s << u"Esc"_s << true;
        QTest::newRow("Ctrl+W") << u"KDE"_s << u"Ctrl+W"_s << true;
        QTest::newRow("Close button") << u"XFCE"_s << u"button"_s << true;
        QTest::newRow("Esc on GNOME") << u"ubuntu:GNOME"_s << u"Esc"_s << false;
        QTest::newRow("Ctrl+W on GNOME") << u"GNOME"_s << u"Ctrl+W"_s << false;
    }
    void keysAndTheCloseButtonCloseTheWindow()
    {
        QFETCH(QString, desktopName);
        QFETCH(QString, how);
        QFETCH(bool, hasButton);
        testing::TestEnvironment env;
        qputenv("XDG_CURRENT_DESKTOP", desktopName.toUtf8());
        PreferenceStore store;
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        qunsetenv("XDG_CURRENT_DESKTOP");
        window.show();
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        auto* buttons = window.findChild<QDialogButtonBox*>(u"closeButtons"_s);
        QCOMPARE(buttons != nullptr, hasButton);
        if (how == u"button"_s) {
            buttons->button(QDialogButtonBox::Close)->click();
        } else if (how == u"Esc"_s) {
            QTest::keyClick(&window, Qt::Key_Escape);
        } else {
            QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
        }
        QCOMPARE(issued.size(), 1);
        QCOMPARE(issued.first().first().value<CommandId>(), commands::Close);
        QCOMPARE(window.handleCommand(commands::Close), noErr);
        QVERIFY(!window.isVisible());
    }

    // Return in a path field never closes the window.
    void returnInAFieldKeepsTheWindowOpen()
    {
        testing::TestEnvironment env;
        qputenv("XDG_CURRENT_DESKTOP", "KDE");
        PreferenceStore store;
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        qunsetenv("XDG_CURRENT_DESKTOP");
        window.show();
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        QTest::keyClick(control<QLineEdit>(window, preferencesControls::StopListPath),
                        Qt::Key_Return);
        QVERIFY2(issued.isEmpty(),
                 issued.isEmpty()
                     ? ""
                     : issued.first().first().value<CommandId>().toString().toLatin1());
        QVERIFY(window.isVisible());
    }

    // What cannot apply is greyed out: the count separator without counts, the separator
    // and the count style in CSV and TSV; as loaded and as the user changes them.
    void settingsThatCannotApplyAreGreyedOut_data()
    {
        QTest::addColumn<int>("format");
        QTest::addColumn<bool>("counts");
        QTest::addColumn<bool>("separateBy");
        QTest::addColumn<bool>("lineStyle");
        QTest::newRow("text with counts") << 0 << true << true << true;
        QTest::newRow("text without counts") << 0 << false << false << true;
        QTest::newRow("CSV with counts") << 1 << true << false << false;
        QTest::newRow("TSV without counts") << 2 << false << false << false;
    }
    void settingsThatCannotApplyAreGreyedOut()
    {
        QFETCH(int, format);
        QFETCH(bool, counts);
        QFETCH(bool, separateBy);
        QFETCH(bool, lineStyle);
        testing::TestEnvironment env;
        PreferenceStore store;
        QVERIFY(store.writeInteger(prefs::ListFormat, format));
        QVERIFY(store.writeBool(prefs::IncludeFrequency, counts));
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        window.loadFromStore();
        auto* separate = control<QComboBox>(window, preferencesControls::SeparateBy);
        auto* line = control<QComboBox>(window, preferencesControls::LineStyle);
        QCOMPARE(separate->isEnabled(), separateBy);
        QCOMPARE(line->isEnabled(), lineStyle);

        // The user goes back to text with counts: both apply again.
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        auto* formats = control<QComboBox>(window, preferencesControls::ListFormat);
        formats->setCurrentIndex(0);
        emit formats->activated(0);
        auto* frequency = control<QCheckBox>(window, preferencesControls::IncludeFrequency);
        if (!counts) {
            frequency->click();
        }
        for (const QList<QVariant>& command : std::as_const(issued)) {
            window.handleCommand(command.first().value<CommandId>());
        }
        QVERIFY(separate->isEnabled());
        QVERIFY(line->isEnabled());
        QCOMPARE(store.readInteger(prefs::ListFormat), 0);
    }

    // A long path shows both its ends, elided in the middle, and whole while it is edited;
    // what is stored is always the whole path.
    void longPathsAreElidedInTheMiddle()
    {
        testing::TestEnvironment env;
        const QString path = u"/home/someone/"_s + u"folder/"_s.repeated(30) + u"stop.txt"_s;
        PreferenceStore store;
        QVERIFY(store.writeString(prefs::StopListPath, path));
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        window.loadFromStore();
        window.resize(500, window.height());
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto* field = control<QLineEdit>(window, preferencesControls::StopListPath);
        QTRY_VERIFY(field->text().contains(u'\u2026'));
        QVERIFY(field->text().startsWith(u"/home/"_s));
        QVERIFY(field->text().endsWith(u"stop.txt"_s));
        QCOMPARE(field->toolTip(), path);

        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        field->setFocus();
        QTRY_COMPARE(field->text(), path);
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        field->end(false);
        QTest::keyClick(field, Qt::Key_Backspace);
        QCOMPARE(window.handleCommand(issued.takeLast().first().value<CommandId>()),
                 eventNotHandledErr);
        QCOMPARE(store.readString(prefs::StopListPath), path.chopped(1));
        control<QComboBox>(window, preferencesControls::SortBy)->setFocus();
        QTRY_VERIFY(field->text().contains(u'\u2026'));
        QCOMPARE(store.readString(prefs::StopListPath), path.chopped(1));
    }

    // A screen reader hears each control by its label: the pop-ups too, whose chosen item
    // is their value; the Preferences window is a dialog.
    void controlsAreNamedByTheirLabels_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("value");
        QTest::newRow("sort") << QString::fromLatin1(preferencesControls::SortBy) << u"Sort words"_s
                              << u"By frequency"_s;
        QTest::newRow("counts") << QString::fromLatin1(preferencesControls::SeparateBy)
                                << u"Show counts as"_s << u"word (3)"_s;
        QTest::newRow("format") << QString::fromLatin1(preferencesControls::ListFormat)
                                << u"List format"_s << u"Text"_s;
        QTest::newRow("minimum") << QString::fromLatin1(preferencesControls::MinimumCount)
                                 << u"Minimum count"_s << u"1"_s;
        QTest::newRow("stop list") << QString::fromLatin1(preferencesControls::StopListPath)
                                   << u"Stop list"_s << QString();
    }
    void controlsAreNamedByTheirLabels()
    {
        QFETCH(QString, id);
        QFETCH(QString, name);
        QFETCH(QString, value);
        testing::TestEnvironment env;
        installAccessibleComboBoxes();
        PreferenceStore store;
        QVERIFY(store.writeChoice(prefs::SortBy, 2));
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        window.loadFromStore();
        window.show();
        QAccessibleInterface* dialog = QAccessible::queryAccessibleInterface(&window);
        QVERIFY(dialog);
        QCOMPARE(dialog->role(), QAccessible::Dialog);
        QAccessibleInterface* control =
            QAccessible::queryAccessibleInterface(window.findChild<QWidget*>(id));
        QVERIFY(control);
        QCOMPARE(control->text(QAccessible::Name), name);
        if (auto* box = qobject_cast<QComboBox*>(control->object())) {
            QCOMPARE(control->role(), QAccessible::ComboBox);
            QCOMPARE(control->text(QAccessible::Value), value);
            QVERIFY(control->actionInterface()->actionNames().contains(
                QAccessibleActionInterface::showMenuAction()));
            QCOMPARE(control->childCount(), 1);
            QCOMPARE(control->child(0)->object(), box->view());
        }
    }

    // A screen reader toggles a check box through its action, not with a click: the change
    // is stored all the same. Loading what is stored issues nothing.
    void aCheckBoxToggledByAScreenReaderIsStored_data()
    {
        QTest::addColumn<QString>("id");
        QTest::newRow("include frequency")
            << QString::fromLatin1(preferencesControls::IncludeFrequency);
        QTest::newRow("a word-list option") << QString::fromLatin1(preferencesControls::FoldCase);
    }
    void aCheckBoxToggledByAScreenReaderIsStored()
    {
        QFETCH(QString, id);
        testing::TestEnvironment env;
        PreferenceStore store;
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        window.loadFromStore();
        QVERIFY(issued.isEmpty());
        auto* box = window.findChild<QCheckBox*>(id);
        const bool was = box->isChecked();
        QAccessibleInterface* control = QAccessible::queryAccessibleInterface(box);
        control->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
        QCOMPARE(issued.size(), 1);
        window.handleCommand(issued.first().first().value<CommandId>());
        const prefs::BoolKey key = id == QLatin1String(preferencesControls::FoldCase)
                                       ? prefs::FoldCase
                                       : prefs::IncludeFrequency;
        QCOMPARE(store.readBool(key), !was);
    }

    // The word-list options, their own group of controls.

    void wordListOptionsLoadWhatIsStored_data()
    {
        QTest::addColumn<QByteArray>("plist"); // the body of the stored dictionary
        QTest::addColumn<QString>("controls");
        QTest::newRow("nothing stored") << QByteArray() << u"0 0 0 0 0 0 | 1 | [] | 0 | [] 6.63"_s;
        QTest::newRow("all on")
            << "<key>FoldCase</key><true/><key>DictionaryOrder</key><true/>"
               "<key>CombineFiles</key><true/><key>IncludeTotals</key><true/>"
               "<key>IncludeRange</key><true/>"
               "<key>IncludePerMillion</key><true/>"
               "<key>MinimumCount</key><integer>70000</integer>"
               "<key>StopListPath</key><string>/home/me/stop.txt</string>"
               "<key>ListFormat</key><integer>2</integer>"
               "<key>ReferencePath</key><string>~/BNC</string>"
               "<key>KeynessThreshold</key><real>15.13</real>"_ba
            << u"1 1 1 1 1 1 | 70000 | [/home/me/stop.txt] | 2 | [~/BNC] 15.13"_s;
        // Below 1 keeps every word, as 1 does; a number naming no format is the text; a
        // threshold below 0 keeps every word, as 0 does.
        QTest::newRow("out of their range")
            << "<key>MinimumCount</key><integer>-5</integer><key>ListFormat</key>"
               "<integer>9</integer><key>KeynessThreshold</key><integer>-4</integer>"_ba
            << u"0 0 0 0 0 0 | 1 | [] | 0 | [] 0"_s;
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
        for (const char* id : optionBoxes) {
            boxes.append(QString::number(control<QCheckBox>(window, id)->isChecked()));
        }
        QCOMPARE(
            u"%1 | %2 | [%3] | %4 | [%5] %6"_s.arg(boxes.join(u' '))
                .arg(control<QSpinBox>(window, preferencesControls::MinimumCount)->value())
                .arg(control<QLineEdit>(window, preferencesControls::StopListPath)->text())
                .arg(control<QComboBox>(window, preferencesControls::ListFormat)->currentIndex())
                .arg(control<QLineEdit>(window, preferencesControls::ReferencePath)->text())
                .arg(control<QDoubleSpinBox>(window, preferencesControls::KeynessThreshold)
                         ->value()),
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
        for (const char* id : optionBoxes) {
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
        QTest::keyClicks(control<QLineEdit>(window, preferencesControls::ReferencePath), u"~/r"_s);
        QCOMPARE(handleIssued(), eventNotHandledErr);
        control<QDoubleSpinBox>(window, preferencesControls::KeynessThreshold)->setValue(3.84);
        QCOMPARE(handleIssued(), eventNotHandledErr);

        QVERIFY(store.readBool(prefs::FoldCase));
        QVERIFY(store.readBool(prefs::DictionaryOrder));
        QVERIFY(store.readBool(prefs::CombineFiles));
        QVERIFY(store.readBool(prefs::IncludeTotals));
        QCOMPARE(store.readInteger(prefs::MinimumCount), 2);
        QCOMPARE(store.readString(prefs::StopListPath), u"~/s"_s);
        QCOMPARE(store.readInteger(prefs::ListFormat), 1);
        QVERIFY(store.readBool(prefs::IncludeRange));
        QVERIFY(store.readBool(prefs::IncludePerMillion));
        QCOMPARE(store.readString(prefs::ReferencePath), u"~/r"_s);
        QCOMPARE(store.readReal(prefs::KeynessThreshold), 3.84);
        // The five first settings keep their defaults.
        QCOMPARE(store.GetIncludeFrequency(), true);
        QCOMPARE(store.GetSortBy(), SortBy::Alphabetical);
        QCOMPARE(store.GetQuitWhenDone(), false);
    }

    // What an entry is: the words in a sequence and the lemma file, loaded, then changed.
    void entryControlsLoadAndWrite_data()
    {
        QTest::addColumn<QByteArray>("plist");
        QTest::addColumn<int>("shownLength");
        QTest::addColumn<QString>("shownPath");
        QTest::newRow("nothing stored") << QByteArray() << 1 << QString();
        QTest::newRow("trigrams and a file")
            << "<key>NGramLength</key><integer>3</integer>"
               "<key>LemmaListPath</key><string>~/lemmas.txt</string>"_ba
            << 3 << u"~/lemmas.txt"_s;
        // Anything but 1 to 5 counts single words, and shows so.
        QTest::newRow("too long") << "<key>NGramLength</key><integer>9</integer>"_ba << 1
                                  << QString();
        QTest::newRow("zero") << "<key>NGramLength</key><integer>0</integer>"_ba << 1 << QString();
    }
    void entryControlsLoadAndWrite()
    {
        QFETCH(QByteArray, plist);
        QFETCH(int, shownLength);
        QFETCH(QString, shownPath);
        testing::TestEnvironment env;
        env.writeFile(u"config/Okaluna Software/Tallyvox.plist"_s,
                      "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>" + plist +
                          "</dict></plist>");
        PreferenceStore store;
        testing::RecordingDesktop desktop;
        desktop.answerOpenPanel({u"/home/me/en.txt"_s});
        PreferencesWindow window(store, desktop);
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        window.loadFromStore();
        auto* length = control<QSpinBox>(window, preferencesControls::NGramLength);
        auto* path = control<QLineEdit>(window, preferencesControls::LemmaListPath);
        QCOMPARE(length->value(), shownLength);
        QCOMPARE(path->text(), shownPath);
        QCOMPARE(issued.size(), 0);
        const auto handleIssued = [&] {
            return window.handleCommand(issued.takeLast().first().value<CommandId>());
        };

        length->setValue(length->maximum());
        QCOMPARE(handleIssued(), eventNotHandledErr);
        QCOMPARE(store.readInteger(prefs::NGramLength), 5);
        path->clear();
        QTest::keyClicks(path, u"~/l"_s);
        QCOMPARE(handleIssued(), eventNotHandledErr);
        QCOMPARE(store.readString(prefs::LemmaListPath), u"~/l"_s);
        control<QPushButton>(window, preferencesControls::ChooseLemmaList)->click();
        QCOMPARE(handleIssued(), eventNotHandledErr);
        QCOMPARE(desktop.texts(u"openPanel"_s),
                 QStringList{QString::fromUtf16(chooseLemmaListPrompt)});
        QCOMPARE(store.readString(prefs::LemmaListPath), u"/home/me/en.txt"_s);
        QCOMPARE(path->text(), u"/home/me/en.txt"_s);
    }

    // The dictionary's controls: a name stored but not installed still shows as chosen, the
    // chooser follows the check box, and the locale's entry stores no name.
    void lemmatizeControlsLoadAndWrite()
    {
        testing::TestEnvironment env;
        env.writeFile(u"config/Okaluna Software/Tallyvox.plist"_s,
                      "<?xml version=\"1.0\"?><plist version=\"1.0\"><dict>"
                      "<key>Lemmatize</key><true/>"
                      "<key>LemmaLanguage</key><string>xx_GONE</string></dict></plist>");
        PreferenceStore store;
        testing::RecordingDesktop desktop;
        PreferencesWindow window(store, desktop);
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        window.loadFromStore();
        auto* box = control<QCheckBox>(window, preferencesControls::Lemmatize);
        auto* language = control<QComboBox>(window, preferencesControls::LemmaLanguage);
        QVERIFY(box->isChecked());
        QVERIFY(language->isEnabled());
        QCOMPARE(language->currentData().toString(), u"xx_GONE"_s);
        QVERIFY(language->findData(u"en_US"_s) > 0);
        QCOMPARE(issued.size(), 0);
        const auto handleIssued = [&] {
            return window.handleCommand(issued.takeLast().first().value<CommandId>());
        };

        box->click();
        QCOMPARE(handleIssued(), eventNotHandledErr);
        QVERIFY(!store.readBool(prefs::Lemmatize));
        QVERIFY(!language->isEnabled());
        box->click();
        QCOMPARE(handleIssued(), eventNotHandledErr);
        language->setFocus();
        QTest::keyClick(language, Qt::Key_Home);
        QCOMPARE(handleIssued(), eventNotHandledErr);
        QVERIFY(store.readBool(prefs::Lemmatize));
        QCOMPARE(store.readString(prefs::LemmaLanguage), QString());
    }

    void pathsAreChosenInTheOpenPanel_data()
    {
        QTest::addColumn<bool>("reference");
        QTest::addColumn<QStringList>("answer");
        QTest::addColumn<QString>("stored");
        QTest::newRow("stop list chosen")
            << false << QStringList{u"/home/me/stop.txt"_s, u"/home/me/b"_s}
            << u"/home/me/stop.txt"_s;
        QTest::newRow("stop list cancelled") << false << QStringList() << u"/old.txt"_s;
        QTest::newRow("reference chosen")
            << true << QStringList{u"/home/me/ref.csv"_s} << u"/home/me/ref.csv"_s;
        QTest::newRow("reference cancelled") << true << QStringList() << u"/old.txt"_s;
    }
    void pathsAreChosenInTheOpenPanel()
    {
        QFETCH(bool, reference);
        QFETCH(QStringList, answer);
        QFETCH(QString, stored);
        const prefs::StringKey key = reference ? prefs::ReferencePath : prefs::StopListPath;
        testing::TestEnvironment env;
        PreferenceStore store;
        store.writeString(prefs::StopListPath, u"/old.txt"_s);
        store.writeString(prefs::ReferencePath, u"/old.txt"_s);
        testing::RecordingDesktop desktop;
        desktop.answerOpenPanel(answer);
        PreferencesWindow window(store, desktop);
        window.loadFromStore();
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        control<QPushButton>(window, reference ? preferencesControls::ChooseReference
                                               : preferencesControls::ChooseStopList)
            ->click();
        QCOMPARE(window.handleCommand(issued.takeLast().first().value<CommandId>()),
                 eventNotHandledErr);
        QCOMPARE(desktop.texts(u"openPanel"_s),
                 QStringList{
                     QString::fromUtf16(reference ? chooseReferencePrompt : chooseStopListPrompt)});
        QCOMPARE(store.readString(key), stored);
        QCOMPARE(control<QLineEdit>(window, reference ? preferencesControls::ReferencePath
                                                      : preferencesControls::StopListPath)
                     ->text(),
                 stored);
        // The other path stays as it was.
        QCOMPARE(store.readString(reference ? prefs::StopListPath : prefs::ReferencePath),
                 u"/old.txt"_s);
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
              preferencesControls::ListFormat, preferencesControls::IncludeTotals,
              preferencesControls::IncludeRange, preferencesControls::IncludePerMillion,
              preferencesControls::ReferencePath, preferencesControls::ChooseReference,
              preferencesControls::KeynessThreshold, preferencesControls::NGramLength,
              preferencesControls::LemmaListPath, preferencesControls::ChooseLemmaList,
              preferencesControls::Lemmatize, preferencesControls::LemmaLanguage}) {
            QWidget* widget = control<QWidget>(window, id);
            QVERIFY2(widget && !widget->toolTip().isEmpty(), id);
        }
    }
};

QTEST_MAIN(PreferencesWindowTest)
#include "PreferencesWindowTest.moc"
