#include "shell/PreferencesWindow.h"

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "ui_PreferencesWindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>

namespace tallyvox {

namespace {

// A pop-up's value is its 1-based item number; like a toolbox control it is pinned
// to the items it has when the stored number lies outside them.
void setPopUpValue(QComboBox* popUp, qint32 value)
{
    popUp->setCurrentIndex(std::clamp(value, 1, popUp->count()) - 1);
}

qint16 popUpValue(const QComboBox* popUp)
{
    return static_cast<qint16>(popUp->currentIndex() + 1);
}

} // namespace

PreferencesWindow::PreferencesWindow(PreferenceStore& store, Desktop& desktop, QWidget* parent)
    : QWidget(parent, Qt::Window), m_store(store), m_desktop(desktop)
{
    Ui::PreferencesWindow ui;
    ui.setupUi(this);
    m_quitWhenDone = findChild<QCheckBox*>(QLatin1String(preferencesControls::QuitWhenDone));
    m_sortBy = findChild<QComboBox*>(QLatin1String(preferencesControls::SortBy));
    m_separateBy = findChild<QComboBox*>(QLatin1String(preferencesControls::SeparateBy));
    m_lineStyle = findChild<QComboBox*>(QLatin1String(preferencesControls::LineStyle));
    m_includeFrequency =
        findChild<QCheckBox*>(QLatin1String(preferencesControls::IncludeFrequency));

    // clicked and activated fire for the user's changes only, not for loadFromStore().
    for (QCheckBox* box : {m_quitWhenDone, m_includeFrequency}) {
        connect(box, &QCheckBox::clicked, this,
                [this, box] { emit commandIssued(commandOf(*box)); });
    }
    for (QComboBox* popUp : {m_sortBy, m_separateBy, m_lineStyle}) {
        connect(popUp, &QComboBox::activated, this,
                [this, popUp] { emit commandIssued(commandOf(*popUp)); });
    }

    const auto box = [this](const char* id) { return findChild<QCheckBox*>(QLatin1String(id)); };
    m_optionBoxes = {{
        {commands::FoldCase, prefs::FoldCase, box(preferencesControls::FoldCase)},
        {commands::DictionaryOrder, prefs::DictionaryOrder,
         box(preferencesControls::DictionaryOrder)},
        {commands::CombineFiles, prefs::CombineFiles, box(preferencesControls::CombineFiles)},
        {commands::IncludeTotals, prefs::IncludeTotals, box(preferencesControls::IncludeTotals)},
        {commands::IncludeRange, prefs::IncludeRange, box(preferencesControls::IncludeRange)},
        {commands::IncludePerMillion, prefs::IncludePerMillion,
         box(preferencesControls::IncludePerMillion)},
    }};
    m_minimumCount = findChild<QSpinBox*>(QLatin1String(preferencesControls::MinimumCount));
    m_stopListPath = findChild<QLineEdit*>(QLatin1String(preferencesControls::StopListPath));
    m_listFormat = findChild<QComboBox*>(QLatin1String(preferencesControls::ListFormat));
    auto* chooser = findChild<QPushButton*>(QLatin1String(preferencesControls::ChooseStopList));
    m_referencePath = findChild<QLineEdit*>(QLatin1String(preferencesControls::ReferencePath));
    m_keynessThreshold =
        findChild<QDoubleSpinBox*>(QLatin1String(preferencesControls::KeynessThreshold));
    auto* referenceChooser =
        findChild<QPushButton*>(QLatin1String(preferencesControls::ChooseReference));

    // As above, only the user's changes: loading blocks the two signals that fire for any.
    for (const OptionBox& option : m_optionBoxes) {
        connect(option.box, &QCheckBox::clicked, this,
                [this, option] { emit commandIssued(commandOf(*option.box)); });
    }
    connect(m_listFormat, &QComboBox::activated, this,
            [this] { emit commandIssued(commandOf(*m_listFormat)); });
    connect(m_minimumCount, &QSpinBox::valueChanged, this,
            [this] { emit commandIssued(commandOf(*m_minimumCount)); });
    connect(m_stopListPath, &QLineEdit::textEdited, this,
            [this] { emit commandIssued(commandOf(*m_stopListPath)); });
    for (QPushButton* button : {chooser, referenceChooser}) {
        connect(button, &QPushButton::clicked, this,
                [this, button] { emit commandIssued(commandOf(*button)); });
    }
    connect(m_referencePath, &QLineEdit::textEdited, this,
            [this] { emit commandIssued(commandOf(*m_referencePath)); });
    connect(m_keynessThreshold, &QDoubleSpinBox::valueChanged, this,
            [this] { emit commandIssued(commandOf(*m_keynessThreshold)); });
}

PreferencesWindow::~PreferencesWindow() = default;

void PreferencesWindow::loadFromStore()
{
    setPopUpValue(m_sortBy, static_cast<qint32>(m_store.GetSortBy()));
    setPopUpValue(m_separateBy, static_cast<qint32>(m_store.GetSeparateBy()));
    setPopUpValue(m_lineStyle, static_cast<qint32>(m_store.GetLineStyle()));
    m_quitWhenDone->setChecked(m_store.GetQuitWhenDone());
    const bool includeFrequency = m_store.GetIncludeFrequency();
    m_includeFrequency->setChecked(includeFrequency);
    m_separateBy->setEnabled(includeFrequency);
    loadWordListOptions();
}

void PreferencesWindow::loadWordListOptions()
{
    for (const OptionBox& option : m_optionBoxes) {
        option.box->setChecked(m_store.readBool(option.key));
    }
    const QSignalBlocker minimumBlocker(m_minimumCount);
    // Pinned to at least 1, which keeps every word as any smaller number does.
    m_minimumCount->setValue(m_store.readInteger(prefs::MinimumCount));
    const QSignalBlocker pathBlocker(m_stopListPath);
    m_stopListPath->setText(m_store.readString(prefs::StopListPath));
    m_listFormat->setCurrentIndex(
        static_cast<int>(listFormatOf(m_store.readInteger(prefs::ListFormat))));
    const QSignalBlocker referenceBlocker(m_referencePath);
    m_referencePath->setText(m_store.readString(prefs::ReferencePath));
    const QSignalBlocker thresholdBlocker(m_keynessThreshold);
    // Pinned to the box's range: a negative threshold keeps every word as 0 does.
    m_keynessThreshold->setValue(m_store.readReal(prefs::KeynessThreshold));
}

void PreferencesWindow::applyWordListOption(CommandId command)
{
    for (const OptionBox& option : m_optionBoxes) {
        if (command == option.command) {
            m_store.writeBool(option.key, option.box->isChecked());
            return;
        }
    }
    if (command == commands::MinimumCount) {
        m_store.writeInteger(prefs::MinimumCount, m_minimumCount->value());
    } else if (command == commands::StopListPath) {
        m_store.writeString(prefs::StopListPath, m_stopListPath->text());
    } else if (command == commands::ChooseStopList) {
        choosePath(chooseStopListPrompt, m_stopListPath, prefs::StopListPath);
    } else if (command == commands::ListFormat) {
        m_store.writeInteger(prefs::ListFormat, m_listFormat->currentIndex());
    } else if (command == commands::ReferencePath) {
        m_store.writeString(prefs::ReferencePath, m_referencePath->text());
    } else if (command == commands::ChooseReference) {
        choosePath(chooseReferencePrompt, m_referencePath, prefs::ReferencePath);
    } else if (command == commands::KeynessThreshold) {
        m_store.writeReal(prefs::KeynessThreshold, m_keynessThreshold->value());
    }
}

void PreferencesWindow::choosePath(const char16_t* prompt, QLineEdit* field,
                                   const prefs::StringKey& key)
{
    const QStringList chosen = m_desktop.chooseFilesToOpen(QString::fromUtf16(prompt));
    if (chosen.isEmpty()) {
        return;
    }
    field->setText(chosen.first());
    m_store.writeString(key, chosen.first());
}

Status PreferencesWindow::handleCommand(CommandId command)
{
    if (command == commands::QuitWhenDone) {
        m_store.writeBool(prefs::QuitWhenDone, m_quitWhenDone->isChecked());
    } else if (command == commands::IncludeFrequency) {
        // Without counts there is nothing to separate.
        const bool on = m_includeFrequency->isChecked();
        m_separateBy->setEnabled(on);
        m_store.writeBool(prefs::IncludeFrequency, on);
    } else if (command == commands::SortBy) {
        m_store.writeChoice(prefs::SortBy, popUpValue(m_sortBy));
    } else if (command == commands::SeparateBy) {
        m_store.writeChoice(prefs::SeparateBy, popUpValue(m_separateBy));
    } else if (command == commands::LineStyle) {
        m_store.writeChoice(prefs::LineStyle, popUpValue(m_lineStyle));
    } else if (command == commands::Close || command == commands::Stop || command == commands::Ok) {
        // Here 'not!' and 'ok  ' only close this window: they neither stop a run nor quit.
        hide();
        emit closed();
        return noErr;
    } else {
        applyWordListOption(command);
    }
    // The option commands go on to the application, which ignores them.
    return eventNotHandledErr;
}

void PreferencesWindow::closeEvent(QCloseEvent* event)
{
    // The close box ends like 'clos', so the next 'pref' creates the window anew.
    event->accept();
    emit commandIssued(commands::Close);
}

} // namespace tallyvox
