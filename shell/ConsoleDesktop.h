#pragma once

#include "support/Desktop.h"

#include <QTextStream>

#include <chrono>
#include <memory>

namespace tallyvox {

/// The desktop of console mode: alerts become lines of text, hand-offs to other
/// applications become "open <path or URL>" lines (see consoleText), and the save panel answers
/// from
/// --save-as. The clipboard and the selection are the real ones when the process
/// has a display; otherwise there are none.
class ConsoleDesktop final : public Desktop {
public:
    /// saveAsPath empty: every save panel is cancelled.
    ConsoleDesktop(QTextStream& out, QTextStream& err, QString saveAsPath);

    void alert(const QString& message) override;
    void stopAlert(const QString& message, const QString& explanation) override;
    void failureAlert(const QString& message) override;
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

    /// On X11 the clipboard's content leaves with the process that put it there. If this
    /// process did and still owns it, waits until another program has fetched it (a
    /// paste, or a clipboard manager taking a copy), something else replaced it, or
    /// limit has passed.
    void holdClipboard(std::chrono::milliseconds limit);

    /// Whether a failure alert was shown: the process should then exit with a failure status.
    bool failureReported() const { return m_failureReported; }

    /// What the clipboard's data and holdClipboard share.
    struct ClipboardHold;

private:
    void printLine(const QString& line);

    QTextStream& m_out;
    QTextStream& m_err;
    QString m_saveAsPath;
    bool m_failureReported = false;
    // Shared with the clipboard's data, which may outlive this object.
    std::shared_ptr<ClipboardHold> m_hold;
};

/// A text as console mode prints it, on one line whatever it holds (oneLine): unchanged when
/// it has no control character and does not begin with $', otherwise quoted the way the
/// shell reads $'...', with \\, \', \n, \r, \t, \xHH and (for C1 controls) \uHHHH.
QString consoleText(const QString& text);

} // namespace tallyvox
