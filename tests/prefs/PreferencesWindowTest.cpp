#include "prefs/PreferencesWindow.h"
#include "prefs/PreferenceStore.h"
#include "tests/common/TestEnvironment.h"

#include <QCheckBox>
#include <QComboBox>
#include <QSignalSpy>
#include <QTest>

using namespace tallyvox;

namespace {

template <class Control>
Control* control(PreferencesWindow& window, const char* id)
{
    auto* found = window.findChild<Control*>(QLatin1String(id));
    Q_ASSERT(found);
    return found;
}

QStringList items(QComboBox* popUp)
{
    QStringList texts;
    for (int i = 0; i < popUp->count(); ++i)
        texts.append(popUp->itemText(i));
    return texts;
}

// Chooses an item as the user does, which sends the pop-up's command.
void choose(QComboBox* popUp, int index)
{
    popUp->setCurrentIndex(index);
    emit popUp->activated(index);
}

} // namespace

class PreferencesWindowTest : public QObject {
    Q_OBJECT

private slots:
    void controlsCarryTheirCommandsAndItemOrders()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        PreferencesWindow window(store);
        const std::pair<const char*, const char*> commands[] = {
            {preferencesControls::QuitWhenDone, "Qwdo"},
            {preferencesControls::SortBy, "SORT"},
            {preferencesControls::SeparateBy, "SEPA"},
            {preferencesControls::LineStyle, "LINE"},
            {preferencesControls::IncludeFrequency, "IFRQ"}};
        for (const auto& [id, code] : commands)
            QCOMPARE(commandOf(*control<QWidget>(window, id)), CommandId::fromChars(code));
        // Item n stands for the stored number n.
        QCOMPARE(items(control<QComboBox>(window, preferencesControls::SortBy)).size(), 2);
        QCOMPARE(items(control<QComboBox>(window, preferencesControls::SeparateBy)),
                 (QStringList{QStringLiteral("word (3)"), QStringLiteral("word, tab, 3"),
                              QStringLiteral("word,3")}));
        QCOMPARE(items(control<QComboBox>(window, preferencesControls::LineStyle)),
                 (QStringList{QStringLiteral("New line (LF)"),
                              QStringLiteral("Carriage return (CR)"), QStringLiteral("CR and LF"),
                              QStringLiteral("Space"), QStringLiteral("Comma")}));
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
        store.writeNumber(prefs::LineStyle, static_cast<qint16>(lineStyle));
        PreferencesWindow window(store);
        window.loadFromStore();
        QCOMPARE(control<QCheckBox>(window, preferencesControls::IncludeFrequency)->isChecked(),
                 includeFrequency);
        QCOMPARE(control<QComboBox>(window, preferencesControls::SeparateBy)->isEnabled(),
                 includeFrequency);
        QCOMPARE(control<QComboBox>(window, preferencesControls::LineStyle)->currentIndex(),
                 lineIndex);
        QCOMPARE(control<QCheckBox>(window, preferencesControls::QuitWhenDone)->isChecked(), false);
    }

    void eachChangeIsWrittenAtOnceAndPassedOn()
    {
        testing::TestEnvironment env;
        PreferenceStore store;
        store.writeBool(prefs::IncludeFrequency, false);
        PreferencesWindow window(store);
        window.loadFromStore();
        QSignalSpy issued(&window, &PreferencesWindow::commandIssued);
        auto apply = [&] {
            // The owner hands each command back to the window first.
            const auto command = issued.takeLast().first().value<CommandId>();
            return window.handleCommand(command);
        };
        auto* frequency = control<QCheckBox>(window, preferencesControls::IncludeFrequency);
        auto* separator = control<QComboBox>(window, preferencesControls::SeparateBy);
        frequency->click();
        QCOMPARE(apply(), eventNotHandledErr);
        QVERIFY(separator->isEnabled());
        QCOMPARE(store.GetIncludeFrequency(), true);

        choose(control<QComboBox>(window, preferencesControls::LineStyle), 2);
        QCOMPARE(apply(), eventNotHandledErr);
        QCOMPARE(store.GetLineStyle(), 3);
        choose(control<QComboBox>(window, preferencesControls::SortBy), 1);
        QCOMPARE(apply(), eventNotHandledErr);
        QCOMPARE(store.GetSortBy(), 2);
        choose(separator, 2);
        QCOMPARE(apply(), eventNotHandledErr);
        QCOMPARE(store.GetSeparateBy(), 3);
        control<QCheckBox>(window, preferencesControls::QuitWhenDone)->click();
        QCOMPARE(apply(), eventNotHandledErr);
        QCOMPARE(store.GetQuitWhenDone(), true);

        frequency->click();
        QCOMPARE(apply(), eventNotHandledErr);
        QVERIFY(!separator->isEnabled());
        QCOMPARE(store.GetIncludeFrequency(), false);
    }

    void closingCommands_data()
    {
        QTest::addColumn<QByteArray>("code");
        QTest::addColumn<int>("status");
        QTest::newRow("clos") << QByteArray("clos") << int(noErr);
        QTest::newRow("not!") << QByteArray("not!") << int(noErr);
        QTest::newRow("ok  ") << QByteArray("ok  ") << int(noErr);
        QTest::newRow("quit") << QByteArray("quit") << int(eventNotHandledErr);
        QTest::newRow("pref") << QByteArray("pref") << int(eventNotHandledErr);
    }
    void closingCommands()
    {
        QFETCH(QByteArray, code);
        QFETCH(int, status);
        testing::TestEnvironment env;
        PreferenceStore store;
        PreferencesWindow window(store);
        window.show();
        QSignalSpy closed(&window, &PreferencesWindow::closed);
        QCOMPARE(int(window.handleCommand(CommandId::fromChars(code.constData()))), status);
        QCOMPARE(closed.size(), status == noErr ? 1 : 0);
        QCOMPARE(window.isVisible(), status != noErr);
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
