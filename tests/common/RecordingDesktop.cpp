#include "tests/common/RecordingDesktop.h"

#include "support/SystemLog.h"

namespace tallyvox::testing {

void RecordingDesktop::record(const char* kind, const QString& text)
{
    m_events.append({QString::fromLatin1(kind), text});
}

QStringList RecordingDesktop::texts(const QString& kind) const
{
    QStringList result;
    for (const Event& event : m_events) {
        if (event.kind == kind) {
            result.append(event.text);
        }
    }
    return result;
}

void RecordingDesktop::alert(const QString& message)
{
    record("alert", message);
}

void RecordingDesktop::stopAlert(const QString& message, const QString& explanation)
{
    record("beep", {});
    record("stopAlert", message);
    record("stopAlertExplanation", explanation);
}

QStringList RecordingDesktop::chooseFilesToOpen(const QString& prompt)
{
    record("openPanel", prompt);
    return m_openAnswers.isEmpty() ? QStringList() : m_openAnswers.takeFirst();
}

QString RecordingDesktop::chooseSavePath(const QString& proposedName)
{
    record("savePanel", proposedName);
    return m_saveAnswers.isEmpty() ? QString() : m_saveAnswers.takeFirst();
}

void RecordingDesktop::openInTextEditor(const QString& path)
{
    record("editor", path);
}

bool RecordingDesktop::openFile(const QString& path)
{
    record("openFile", path);
    return true;
}

bool RecordingDesktop::openUrl(const QUrl& url)
{
    record("openUrl", url.toString(QUrl::FullyEncoded));
    return !m_refusedSchemes.contains(url.scheme());
}

void RecordingDesktop::beep()
{
    record("beep", {});
}

void RecordingDesktop::playSound(const QString& name)
{
    record("sound", name);
}

void RecordingDesktop::raiseApplication()
{
    record("raise", {});
}

void RecordingDesktop::failureAlert(const QString& message)
{
    record("failureAlert", message);
}

void RecordingDesktop::log(const QString& line)
{
    // As the real desktops write it: a caller's line break cannot make a second line.
    record("log", oneLine(line));
}

void RecordingDesktop::setClipboardText(const QString& text)
{
    record("clipboard", text);
    m_clipboard = text;
}

QList<PasteboardItem> RecordingDesktop::readSelection(SelectionSource source)
{
    record("readSelection", source == SelectionSource::Primary ? QStringLiteral("primary")
                                                               : QStringLiteral("clipboard"));
    return source == SelectionSource::Primary ? m_primary : m_clipboardItems;
}

void RecordingDesktop::filesChanged(const QStringList& paths)
{
    record("filesChanged", paths.join(QLatin1Char('\n')));
}

void RecordingDesktop::setSelection(SelectionSource source, const QList<PasteboardItem>& items)
{
    (source == SelectionSource::Primary ? m_primary : m_clipboardItems) = items;
}

} // namespace tallyvox::testing
