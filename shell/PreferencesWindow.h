#pragma once

#include "shell/Command.h"

#include <QWidget>

class QCheckBox;
class QComboBox;

namespace tallyvox {

class PreferenceStore;

/// The controls' object names, made from their (signature, id) identifiers.
namespace preferencesControls {
inline constexpr char QuitWhenDone[] = "CNTL_4";
inline constexpr char SortBy[] = "SORT_0";
inline constexpr char SeparateBy[] = "SEPA_0";
inline constexpr char LineStyle[] = "LINE_0";
inline constexpr char IncludeFrequency[] = "IFRQ_0";
} // namespace preferencesControls

/// The modeless window editing the five user options. Each change is written to the
/// store the moment it is made; there is nothing to apply or undo.
class PreferencesWindow : public QWidget, public CommandHandler {
    Q_OBJECT
public:
    explicit PreferencesWindow(PreferenceStore& store, QWidget* parent = nullptr);
    ~PreferencesWindow() override;

    /// Sets every control from the store, so reopening shows what is stored now.
    void loadFromStore();

    /// The option commands are applied and then passed on (not handled); the three
    /// closing commands hide the window and are handled here.
    Status handleCommand(CommandId command) override;

signals:
    /// A control was changed or the close box used; the owner dispatches it, offering
    /// it to this window first.
    void commandIssued(tallyvox::CommandId command);
    /// The window has been hidden by a closing command and is to be forgotten.
    void closed();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    PreferenceStore& m_store;
    QCheckBox* m_quitWhenDone;
    QComboBox* m_sortBy;
    QComboBox* m_separateBy;
    QComboBox* m_lineStyle;
    QCheckBox* m_includeFrequency;
};

} // namespace tallyvox
