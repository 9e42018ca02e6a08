#pragma once

#include "prefs/PreferenceKeys.h"
#include "shell/Command.h"
#include "support/Status.h"
#include "support/Translation.h"

#include <QDialog>

#include <array>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QLineEdit;
class QSpinBox;

namespace tallyvox {

class Desktop;
class PreferenceStore;

/// The controls' object names, made from their (signature, id) identifiers.
namespace preferencesControls {
inline constexpr char QuitWhenDone[] = "CNTL_4";
inline constexpr char SortBy[] = "SORT_0";
inline constexpr char SeparateBy[] = "SEPA_0";
inline constexpr char LineStyle[] = "LINE_0";
inline constexpr char IncludeFrequency[] = "IFRQ_0";
// The word-list options, named after their command codes the same way.
inline constexpr char FoldCase[] = "FOLD_0";
inline constexpr char DictionaryOrder[] = "DICT_0";
inline constexpr char MinimumCount[] = "MINC_0";
inline constexpr char StopListPath[] = "STPL_0";
inline constexpr char ChooseStopList[] = "STPC_0";
inline constexpr char CombineFiles[] = "COMB_0";
inline constexpr char ListFormat[] = "LFMT_0";
inline constexpr char IncludeTotals[] = "TOTL_0";
inline constexpr char IncludeRange[] = "RANG_0";
inline constexpr char IncludePerMillion[] = "PMIL_0";
inline constexpr char ReferencePath[] = "REFP_0";
inline constexpr char ChooseReference[] = "REFC_0";
inline constexpr char KeynessThreshold[] = "KEYT_0";
inline constexpr char NGramLength[] = "NGRM_0";
inline constexpr char LemmaListPath[] = "LEMP_0";
inline constexpr char ChooseLemmaList[] = "LEMC_0";
inline constexpr char Lemmatize[] = "LEMZ_0";
inline constexpr char LemmaLanguage[] = "LEML_0";
} // namespace preferencesControls

/// The prompt of the open panel that chooses a stop list.
inline constexpr char16_t chooseStopListPrompt[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::PreferencesWindow", "Choose a Stop List");
/// The prompt of the open panel that chooses a lemma file.
inline constexpr char16_t chooseLemmaListPrompt[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::PreferencesWindow", "Choose a Lemma List");
/// The prompt of the open panel that chooses a keyword list's reference.
inline constexpr char16_t chooseReferencePrompt[] =
    TALLYVOX_TRANSLATE_NOOP("tallyvox::PreferencesWindow", "Choose a Reference");

/// The modeless window editing the five user options, and in a group of their own the
/// word-list options. Each change is written to the store the moment it is made; there is
/// nothing to apply or undo. Esc, Ctrl+W and its Close button end it as the close box does.
class PreferencesWindow : public QDialog {
    Q_OBJECT
public:
    /// The desktop shows the open panel that chooses a stop list.
    PreferencesWindow(PreferenceStore& store, Desktop& desktop, QWidget* parent = nullptr);
    ~PreferencesWindow() override;

    /// Sets every control from the store, so reopening shows what is stored now.
    void loadFromStore();

    /// Sees every command of this window before the application does: the option
    /// commands are applied and then passed on (eventNotHandledErr); the three closing
    /// commands hide the window and are handled here (noErr).
    Status handleCommand(CommandId command);
    /// Esc: as the close box.
    void reject() override;

signals:
    /// A control was changed or the close box used; the owner dispatches it, offering
    /// it to this window first.
    void commandIssued(tallyvox::CommandId command);
    /// The window has been hidden by a closing command and is to be forgotten.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A check box of the word-list options and the switch it stands for.
    struct OptionBox {
        CommandId command;
        prefs::BoolKey key{};
        QCheckBox* box = nullptr;
    };

    void loadWordListOptions();
    void nameControlsAfterTheirLabels();
    /// Greys out what the list's format or the other settings leave without effect.
    void updateApplicability();
    /// Shows a path field's whole text while it is edited, else elided in the middle.
    void fitPath(QLineEdit* field);
    /// A path field's text, whole even while it shows it elided.
    static QString pathOf(const QLineEdit* field);
    static void setPath(QLineEdit* field, const QString& path);
    /// Adds the rows of what an entry is (words in a sequence, a lemma file) to the
    /// word-list group.
    void addEntryControls();
    /// Adds the rows of grouping forms by a dictionary: a check box and the dictionaries
    /// found.
    void addLemmatizeControls();
    void loadLemmatizeControls();
    /// Applies a word-list option's command; any other command does nothing here.
    void applyWordListOption(CommandId command);
    /// Asks the open panel for a file and stores it in field and under key.
    void choosePath(const char16_t* prompt, QLineEdit* field, const prefs::StringKey& key);

    PreferenceStore& m_store;
    Desktop& m_desktop;
    QCheckBox* m_quitWhenDone;
    QComboBox* m_sortBy;
    QComboBox* m_separateBy;
    QComboBox* m_lineStyle;
    QCheckBox* m_includeFrequency;
    std::array<OptionBox, 6> m_optionBoxes;
    QSpinBox* m_minimumCount;
    QLineEdit* m_stopListPath;
    QLineEdit* m_referencePath;
    QDoubleSpinBox* m_keynessThreshold;
    QComboBox* m_listFormat;
    QSpinBox* m_ngramLength = nullptr;
    QLineEdit* m_lemmaListPath = nullptr;
    QCheckBox* m_lemmatize = nullptr;
    QComboBox* m_lemmaLanguage = nullptr;
};

} // namespace tallyvox
