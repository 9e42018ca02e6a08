#include "shell/PreferencesWindow.h"

#include "prefs/PreferenceStore.h"
#include "ui_PreferencesWindow.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>

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

PreferencesWindow::PreferencesWindow(PreferenceStore& store, QWidget* parent)
    : QWidget(parent, Qt::Window), m_store(store)
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
