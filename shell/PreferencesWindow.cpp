#include "shell/PreferencesWindow.h"

#include "prefs/PreferenceStore.h"
#include "support/Desktop.h"
#include "ui_PreferencesWindow.h"
#include "words/Lemmatizer.h"
#include "words/WordListOptions.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QStyle>

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

// The property that keeps a path field's whole text while it shows the text elided.
constexpr char wholePathProperty[] = "wholePath";

// GNOME's preferences windows apply at once and close from their title bar only; the
// other desktops' dialogs end with a button.
bool desktopDialogsHaveCloseButton()
{
    const QString desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP");
    return !desktops.split(u':').contains(QStringLiteral("GNOME"), Qt::CaseInsensitive);
}

} // namespace

PreferencesWindow::PreferencesWindow(PreferenceStore& store, Desktop& desktop, QWidget* parent)
    : QDialog(parent), m_store(store), m_desktop(desktop)
{
    Ui::PreferencesWindow ui;
    ui.setupUi(this);
    setModal(false);
    auto* closeShortcut = new QShortcut(QKeySequence::Close, this);
    connect(closeShortcut, &QShortcut::activated, this, &PreferencesWindow::reject);
    if (desktopDialogsHaveCloseButton()) {
        auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
        buttons->setObjectName(QStringLiteral("closeButtons"));
        connect(buttons, &QDialogButtonBox::rejected, this, &PreferencesWindow::reject);
        layout()->addWidget(buttons);
    }
    // Return in a field edits it; it never presses a button of the window.
    for (QPushButton* button : findChildren<QPushButton*>()) {
        button->setAutoDefault(false);
    }
    m_quitWhenDone = findChild<QCheckBox*>(QLatin1String(preferencesControls::QuitWhenDone));
    m_sortBy = findChild<QComboBox*>(QLatin1String(preferencesControls::SortBy));
    m_separateBy = findChild<QComboBox*>(QLatin1String(preferencesControls::SeparateBy));
    m_lineStyle = findChild<QComboBox*>(QLatin1String(preferencesControls::LineStyle));
    m_includeFrequency =
        findChild<QCheckBox*>(QLatin1String(preferencesControls::IncludeFrequency));

    // activated fires for the user's changes only, not for loadFromStore(); a check box's
    // toggled fires for a click and for a screen reader's toggle alike, and loading blocks it.
    const auto issue = [this](CommandId command) {
        return [this, command] { emit commandIssued(command); };
    };
    connect(m_quitWhenDone, &QCheckBox::toggled, this, issue(commands::QuitWhenDone));
    connect(m_includeFrequency, &QCheckBox::toggled, this, issue(commands::IncludeFrequency));
    connect(m_sortBy, &QComboBox::activated, this, issue(commands::SortBy));
    connect(m_separateBy, &QComboBox::activated, this, issue(commands::SeparateBy));
    connect(m_lineStyle, &QComboBox::activated, this, issue(commands::LineStyle));

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
        connect(option.box, &QCheckBox::toggled, this, issue(option.command));
    }
    connect(m_listFormat, &QComboBox::activated, this, issue(commands::ListFormat));
    connect(m_minimumCount, &QSpinBox::valueChanged, this, issue(commands::MinimumCount));
    connect(m_stopListPath, &QLineEdit::textEdited, this, issue(commands::StopListPath));
    connect(chooser, &QPushButton::clicked, this, issue(commands::ChooseStopList));
    connect(referenceChooser, &QPushButton::clicked, this, issue(commands::ChooseReference));
    connect(m_referencePath, &QLineEdit::textEdited, this, issue(commands::ReferencePath));
    connect(m_keynessThreshold, &QDoubleSpinBox::valueChanged, this,
            issue(commands::KeynessThreshold));
    for (QLineEdit* field : {m_stopListPath, m_referencePath}) {
        field->installEventFilter(this);
    }
    addEntryControls();
    addLemmatizeControls();
    nameControlsAfterTheirLabels();
}

// A screen reader names a pop-up by its current item and a field by its text unless the
// control carries the name its label shows.
void PreferencesWindow::nameControlsAfterTheirLabels()
{
    for (const QLabel* label : findChildren<QLabel*>()) {
        QWidget* buddy = label->buddy();
        if (!buddy || !buddy->accessibleName().isEmpty()) {
            continue;
        }
        QString name = label->text();
        name.remove(QRegularExpression(QStringLiteral("&(?!&)")));
        while (name.endsWith(u':') || name.endsWith(u' ')) {
            name.chop(1);
        }
        buddy->setAccessibleName(name);
    }
}

void PreferencesWindow::addEntryControls()
{
    auto* layout = findChild<QFormLayout*>(QStringLiteral("optionsLayout"));
    QWidget* group = layout->parentWidget();
    m_ngramLength = new QSpinBox(group);
    m_ngramLength->setObjectName(QLatin1String(preferencesControls::NGramLength));
    m_ngramLength->setRange(1, longestNGram);
    m_ngramLength->setToolTip(
        tr("Each entry is a sequence of this many words, never across a sentence end or a "
           "paragraph. A stop word at either end leaves a sequence out. 1: single words."));
    auto* ngramLabel = new QLabel(tr("Words per entry:"), group);
    ngramLabel->setBuddy(m_ngramLength);
    layout->addRow(ngramLabel, m_ngramLength);

    m_lemmaListPath = new QLineEdit(group);
    m_lemmaListPath->setObjectName(QLatin1String(preferencesControls::LemmaListPath));
    m_lemmaListPath->setPlaceholderText(tr("None"));
    m_lemmaListPath->setToolTip(
        tr("A UTF-8 text file of lines \"headword -> form, form, ...\"; each headword becomes one "
           "entry with its forms' counts added up. Empty: none."));
    auto* chooser = new QPushButton(tr("Choose…"), group);
    chooser->setObjectName(QLatin1String(preferencesControls::ChooseLemmaList));
    chooser->setToolTip(tr("Choose the lemma file."));
    chooser->setAutoDefault(false); // Return in a field never presses it
    auto* row = new QHBoxLayout;
    row->addWidget(m_lemmaListPath);
    row->addWidget(chooser);
    auto* lemmaLabel = new QLabel(tr("Lemma list:"), group);
    lemmaLabel->setBuddy(m_lemmaListPath);
    layout->addRow(lemmaLabel, row);

    connect(m_ngramLength, &QSpinBox::valueChanged, this,
            [this] { emit commandIssued(commands::NGramLength); });
    connect(m_lemmaListPath, &QLineEdit::textEdited, this,
            [this] { emit commandIssued(commands::LemmaListPath); });
    m_lemmaListPath->installEventFilter(this);
    connect(chooser, &QPushButton::clicked, this,
            [this] { emit commandIssued(commands::ChooseLemmaList); });
}

void PreferencesWindow::addLemmatizeControls()
{
    auto* layout = findChild<QFormLayout*>(QStringLiteral("optionsLayout"));
    QWidget* group = layout->parentWidget();
    m_lemmatize = new QCheckBox(tr("Group word forms by a dictionary"), group);
    m_lemmatize->setObjectName(QLatin1String(preferencesControls::Lemmatize));
    m_lemmatize->setToolTip(
        tr("Without a lemma list, each word is counted under its stem in the Hunspell "
           "dictionary chosen below (goes, going: go). Words it does not know stay as "
           "they are."));
    // In the column of the other checkboxes, not across the labels.
    layout->addRow(static_cast<QWidget*>(nullptr), m_lemmatize);

    m_lemmaLanguage = new QComboBox(group);
    m_lemmaLanguage->setObjectName(QLatin1String(preferencesControls::LemmaLanguage));
    m_lemmaLanguage->setToolTip(tr("The Hunspell dictionary that groups the word forms: "
                                   "those installed (Debian's hunspell-* packages)."));
    // The empty name follows the locale; the others are the dictionaries installed now.
    m_lemmaLanguage->addItem(tr("The locale's (%1)").arg(lemmaLanguageOf(QString())), QString());
    for (const QString& language : lemmaLanguages()) {
        m_lemmaLanguage->addItem(language, language);
    }
    auto* label = new QLabel(tr("Dictionary:"), group);
    label->setBuddy(m_lemmaLanguage);
    layout->addRow(label, m_lemmaLanguage);

    connect(m_lemmatize, &QCheckBox::toggled, this,
            [this] { emit commandIssued(commands::Lemmatize); });
    connect(m_lemmaLanguage, &QComboBox::activated, this,
            [this] { emit commandIssued(commands::LemmaLanguage); });
}

void PreferencesWindow::loadLemmatizeControls()
{
    const QSignalBlocker blocker(m_lemmatize);
    m_lemmatize->setChecked(m_store.readBool(prefs::Lemmatize));
    const QString language = m_store.readString(prefs::LemmaLanguage);
    int index = m_lemmaLanguage->findData(language);
    if (index < 0) {
        // A dictionary named in the settings but not installed is still shown as chosen.
        m_lemmaLanguage->addItem(tr("%1 (not installed)").arg(language), language);
        index = m_lemmaLanguage->count() - 1;
    }
    m_lemmaLanguage->setCurrentIndex(index);
    m_lemmaLanguage->setEnabled(m_lemmatize->isChecked());
}

PreferencesWindow::~PreferencesWindow() = default;

void PreferencesWindow::loadFromStore()
{
    setPopUpValue(m_sortBy, static_cast<qint32>(m_store.GetSortBy()));
    setPopUpValue(m_separateBy, static_cast<qint32>(m_store.GetSeparateBy()));
    setPopUpValue(m_lineStyle, static_cast<qint32>(m_store.GetLineStyle()));
    const QSignalBlocker quitBlocker(m_quitWhenDone);
    m_quitWhenDone->setChecked(m_store.GetQuitWhenDone());
    const bool includeFrequency = m_store.GetIncludeFrequency();
    const QSignalBlocker frequencyBlocker(m_includeFrequency);
    m_includeFrequency->setChecked(includeFrequency);
    loadWordListOptions();
    updateApplicability();
}

void PreferencesWindow::updateApplicability()
{
    // Without counts there is nothing to separate; CSV and TSV have their own layout.
    const bool text = m_listFormat->currentIndex() == 0;
    m_separateBy->setEnabled(text && m_includeFrequency->isChecked());
    m_lineStyle->setEnabled(text);
}

QString PreferencesWindow::pathOf(const QLineEdit* field)
{
    const QVariant whole = field->property(wholePathProperty);
    return whole.isValid() ? whole.toString() : field->text();
}

void PreferencesWindow::setPath(QLineEdit* field, const QString& path)
{
    const QSignalBlocker blocker(field);
    field->setProperty(wholePathProperty, QVariant());
    field->setText(path);
}

void PreferencesWindow::fitPath(QLineEdit* field)
{
    const QString whole = pathOf(field);
    const QSignalBlocker blocker(field);
    const int room = field->contentsRect().width() -
                     2 * field->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, field) -
                     field->textMargins().left() - field->textMargins().right() - 4;
    const QString shown = field->fontMetrics().elidedText(whole, Qt::ElideMiddle, room);
    // Until it is laid out, a field has no width to speak of.
    if (!field->isVisible() || field->hasFocus() || shown == whole) {
        field->setProperty(wholePathProperty, QVariant());
        if (field->text() != whole) {
            field->setText(whole);
        }
        field->setToolTip(QString());
        return;
    }
    field->setProperty(wholePathProperty, whole);
    field->setText(shown);
    field->setCursorPosition(0);
    field->setToolTip(whole);
}

bool PreferencesWindow::eventFilter(QObject* watched, QEvent* event)
{
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (field && (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut ||
                  event->type() == QEvent::Resize || event->type() == QEvent::Show)) {
        fitPath(field);
    }
    return QDialog::eventFilter(watched, event);
}

void PreferencesWindow::loadWordListOptions()
{
    for (const OptionBox& option : m_optionBoxes) {
        const QSignalBlocker blocker(option.box);
        option.box->setChecked(m_store.readBool(option.key));
    }
    const QSignalBlocker minimumBlocker(m_minimumCount);
    // Pinned to at least 1, which keeps every word as any smaller number does.
    m_minimumCount->setValue(m_store.readInteger(prefs::MinimumCount));
    setPath(m_stopListPath, m_store.readString(prefs::StopListPath));
    fitPath(m_stopListPath);
    m_listFormat->setCurrentIndex(
        static_cast<int>(listFormatOf(m_store.readInteger(prefs::ListFormat))));
    setPath(m_referencePath, m_store.readString(prefs::ReferencePath));
    fitPath(m_referencePath);
    const QSignalBlocker thresholdBlocker(m_keynessThreshold);
    // Pinned to the box's range: a negative threshold keeps every word as 0 does.
    m_keynessThreshold->setValue(m_store.readReal(prefs::KeynessThreshold));
    const QSignalBlocker ngramBlocker(m_ngramLength);
    m_ngramLength->setValue(ngramLengthOf(m_store.readInteger(prefs::NGramLength)));
    setPath(m_lemmaListPath, m_store.readString(prefs::LemmaListPath));
    fitPath(m_lemmaListPath);
    loadLemmatizeControls();
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
        m_store.writeString(prefs::StopListPath, pathOf(m_stopListPath));
    } else if (command == commands::ChooseStopList) {
        choosePath(chooseStopListPrompt, m_stopListPath, prefs::StopListPath);
    } else if (command == commands::ListFormat) {
        m_store.writeInteger(prefs::ListFormat, m_listFormat->currentIndex());
        updateApplicability();
    } else if (command == commands::ReferencePath) {
        m_store.writeString(prefs::ReferencePath, pathOf(m_referencePath));
    } else if (command == commands::ChooseReference) {
        choosePath(chooseReferencePrompt, m_referencePath, prefs::ReferencePath);
    } else if (command == commands::KeynessThreshold) {
        m_store.writeReal(prefs::KeynessThreshold, m_keynessThreshold->value());
    } else if (command == commands::NGramLength) {
        m_store.writeInteger(prefs::NGramLength, m_ngramLength->value());
    } else if (command == commands::LemmaListPath) {
        m_store.writeString(prefs::LemmaListPath, pathOf(m_lemmaListPath));
    } else if (command == commands::ChooseLemmaList) {
        choosePath(chooseLemmaListPrompt, m_lemmaListPath, prefs::LemmaListPath);
    } else if (command == commands::Lemmatize) {
        m_store.writeBool(prefs::Lemmatize, m_lemmatize->isChecked());
        m_lemmaLanguage->setEnabled(m_lemmatize->isChecked());
    } else if (command == commands::LemmaLanguage) {
        m_store.writeString(prefs::LemmaLanguage, m_lemmaLanguage->currentData().toString());
    }
}

void PreferencesWindow::choosePath(const char16_t* prompt, QLineEdit* field,
                                   const prefs::StringKey& key)
{
    const QStringList chosen =
        m_desktop.chooseFilesToOpen(translated("tallyvox::PreferencesWindow", prompt));
    if (chosen.isEmpty()) {
        return;
    }
    setPath(field, chosen.first());
    fitPath(field);
    m_store.writeString(key, chosen.first());
}

Status PreferencesWindow::handleCommand(CommandId command)
{
    if (command == commands::QuitWhenDone) {
        m_store.writeBool(prefs::QuitWhenDone, m_quitWhenDone->isChecked());
    } else if (command == commands::IncludeFrequency) {
        m_store.writeBool(prefs::IncludeFrequency, m_includeFrequency->isChecked());
        updateApplicability();
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

void PreferencesWindow::reject()
{
    emit commandIssued(commands::Close);
}

void PreferencesWindow::closeEvent(QCloseEvent* event)
{
    // The close box ends like 'clos', so the next 'pref' creates the window anew.
    event->accept();
    emit commandIssued(commands::Close);
}

} // namespace tallyvox
