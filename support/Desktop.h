#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>
#include <QStringList>
#include <QUrl>

namespace tallyvox {

/// One pasteboard item: its MIME types in the order they were offered, each with its bytes.
using PasteboardItem = QList<QPair<QString, QByteArray>>;

/// Which of the desktop's selections to read.
enum class SelectionSource { Primary, Clipboard };

/// Everything that reaches outside the process and a test cannot watch directly.
/// The application picks one implementation at start-up (windows, console, or the
/// recording fake in tests) and passes it to the code that needs it.
class Desktop {
public:
    Desktop() = default;
    virtual ~Desktop() = default;
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// A modal alert whose message text is the whole message, with one "OK" button.
    virtual void alert(const QString& message) = 0;
    /// An alert saying that something the user asked for was not done (a file not saved);
    /// console mode then ends with a failure status.
    virtual void failureAlert(const QString& message) { alert(message); }
    /// The standard stop alert of the batch run, a message with its explanation;
    /// it beeps before it shows.
    virtual void stopAlert(const QString& message, const QString& explanation) = 0;
    /// The open panel (several existing files, hidden ones shown); empty when cancelled.
    virtual QStringList chooseFilesToOpen(const QString& prompt) = 0;
    /// The save panel with a proposed name; the chosen path, or empty when cancelled.
    virtual QString chooseSavePath(const QString& proposedName) = 0;
    /// Hands a text file to the user's text editor without waiting for it.
    virtual void openInTextEditor(const QString& path) = 0;
    /// Opens a file with its default application; false when that could not be asked.
    virtual bool openFile(const QString& path) = 0;
    /// Opens a URL in the user's browser; false when that could not be asked.
    virtual bool openUrl(const QUrl& url) = 0;
    virtual void beep() = 0;
    /// Plays a named sound of the desktop's sound theme, if there is one.
    virtual void playSound(const QString& name) = 0;
    /// Brings the application's main window to the front.
    virtual void raiseApplication() = 0;
    /// One line for the system log.
    virtual void log(const QString& line) = 0;
    /// Replaces the clipboard's content with plain text.
    virtual void setClipboardText(const QString& text) = 0;
    /// The items of a selection with every MIME type it offers; empty when there is none.
    virtual QList<PasteboardItem> readSelection(SelectionSource source) = 0;
    /// Tells file managers that these files were renamed or changed (best effort).
    virtual void filesChanged(const QStringList& paths) = 0;
};

} // namespace tallyvox
