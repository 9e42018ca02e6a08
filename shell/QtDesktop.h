#pragma once

#include "shell/ApplicationChooser.h"
#include "support/Desktop.h"

#include <QPointer>
#include <QWidget>

namespace tallyvox {

/// The desktop of the windowed application: Qt dialogs, the desktop's default
/// applications (word lists and local pages by their type, never Tallyvox itself), the
/// clipboard and PRIMARY selection, and the session bus. Dialogs belong to the
/// application's main window, which raiseApplication brings forward.
class QtDesktop final : public Desktop {
public:
    QtDesktop();

    /// The main window, which the dialogs belong to and raiseApplication brings forward.
    /// The desktop is made before it, so it is given once it exists.
    void setWindow(QWidget* window) { m_window = window; }

    void alert(const QString& message) override;
    void stopAlert(const QString& message, const QString& explanation) override;
    QStringList chooseFilesToOpen(const QString& prompt) override;
    QString chooseSavePath(const QString& proposedName) override;
    void openInTextEditor(const QString& path) override;
    bool openFile(const QString& path) override;
    bool openUrl(const QUrl& url) override;
    void beep() override;
    void playSound(const QString& name) override;
    void raiseApplication() override;
    void log(const QString& line) override;
    void setClipboardText(const QString& text) override;
    QList<PasteboardItem> readSelection(SelectionSource source) override;
    void filesChanged(const QStringList& paths) override;

private:
    ApplicationChooser m_applications;
    QPointer<QWidget> m_window;
    /// The folder the Open dialog was last left in, for the next time.
    QString m_openFolder;
};

/// Tells file managers that follow KDirNotify (Dolphin and the KIO file dialogs) that
/// these files changed. Does nothing without a session bus.
void announceFilesChanged(const QStringList& paths);

} // namespace tallyvox
