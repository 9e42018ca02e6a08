#pragma once

#include "support/Desktop.h"

#include <QStringList>

namespace tallyvox::testing {

/// A desktop that records what it is asked to do, answers panels from queues the
/// test fills, and shows nothing.
class RecordingDesktop final : public Desktop {
public:
    struct Event {
        QString
            kind; // "alert", "failureAlert", "stopAlert", "openPanel", "savePanel", "editor", ...
        QString text;
    };

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

    // What the panels and the selection answer next.
    void answerOpenPanel(const QStringList& paths) { m_openAnswers.append(paths); }
    void answerSavePanel(const QString& path) { m_saveAnswers.append(path); }
    /// Addresses of this scheme cannot be opened from now on (none handles them).
    void refuseScheme(const QString& scheme) { m_refusedSchemes.append(scheme); }
    void setSelection(SelectionSource source, const QList<PasteboardItem>& items);

    const QList<Event>& events() const { return m_events; }
    /// The texts of the recorded events of one kind, in order.
    QStringList texts(const QString& kind) const;
    QStringList alerts() const { return texts(QStringLiteral("alert")); }
    QStringList logLines() const { return texts(QStringLiteral("log")); }
    QString clipboard() const { return m_clipboard; }
    void clear() { m_events.clear(); }

private:
    void record(const char* kind, const QString& text);

    QList<Event> m_events;
    QList<QStringList> m_openAnswers;
    QStringList m_saveAnswers;
    QStringList m_refusedSchemes;
    QList<PasteboardItem> m_primary;
    QList<PasteboardItem> m_clipboardItems;
    QString m_clipboard;
};

} // namespace tallyvox::testing
