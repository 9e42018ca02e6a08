#include "shell/ConsoleDesktop.h"

#include "shell/SelectionItems.h"
#include "shell/WaylandClipboard.h"
#include "support/SystemLog.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>
#include <QTimer>

namespace tallyvox {

namespace {

// Only a GUI application has a clipboard; a plain core application has none.
QClipboard* clipboard()
{
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance())
               ? QGuiApplication::clipboard()
               : nullptr;
}

} // namespace

struct ConsoleDesktop::ClipboardHold {
    bool set = false;
    bool fetched = false;
    QPointer<QEventLoop> waiting;
};

namespace {

// Clipboard text that notes when another program asks for its bytes: the window system
// asks the data for them only on behalf of a reader.
class HeldText final : public QMimeData {
public:
    explicit HeldText(std::weak_ptr<ConsoleDesktop::ClipboardHold> hold) : m_hold(std::move(hold))
    {}

protected:
    QVariant retrieveData(const QString& mimeType, QMetaType type) const override
    {
        if (const auto hold = m_hold.lock()) {
            hold->fetched = true;
            // Ends the wait once this request has been answered.
            if (hold->waiting) {
                hold->waiting->quit();
            }
        }
        return QMimeData::retrieveData(mimeType, type);
    }

private:
    std::weak_ptr<ConsoleDesktop::ClipboardHold> m_hold;
};

} // namespace

ConsoleDesktop::ConsoleDesktop(QTextStream& out, QTextStream& err, QString saveAsPath)
    : m_out(out), m_err(err), m_saveAsPath(std::move(saveAsPath)),
      m_hold(std::make_shared<ClipboardHold>())
{}

QString consoleText(const QString& text)
{
    return oneLine(text);
}

void ConsoleDesktop::printLine(const QString& line)
{
    m_out << line << '\n';
    m_out.flush();
}

void ConsoleDesktop::alert(const QString& message)
{
    printLine(consoleText(message));
}

void ConsoleDesktop::stopAlert(const QString& message, const QString&)
{
    printLine(consoleText(message));
}

void ConsoleDesktop::failureAlert(const QString& message)
{
    m_failureReported = true;
    printLine(consoleText(message));
}

QStringList ConsoleDesktop::chooseFilesToOpen(const QString&)
{
    m_err << QCoreApplication::translate(
        "tallyvox::ConsoleDesktop", "tallyvox: the open panel is not available in console mode\n");
    m_err.flush();
    return {};
}

QString ConsoleDesktop::chooseSavePath(const QString&)
{
    return m_saveAsPath;
}

void ConsoleDesktop::openInTextEditor(const QString& path)
{
    printLine(QStringLiteral("open ") + consoleText(path));
}

bool ConsoleDesktop::openFile(const QString& path)
{
    printLine(QStringLiteral("open ") + consoleText(path));
    return true;
}

bool ConsoleDesktop::openUrl(const QUrl& url)
{
    // Encoded, so it has no blanks or line breaks of its own.
    printLine(QStringLiteral("open ") + QString::fromLatin1(url.toEncoded()));
    return true;
}

void ConsoleDesktop::beep() {}

void ConsoleDesktop::playSound(const QString&) {}

void ConsoleDesktop::raiseApplication() {}

void ConsoleDesktop::log(const QString& line)
{
    systemLog(line);
}

void ConsoleDesktop::setClipboardText(const QString& text)
{
    // wl-copy keeps the text offered by a process of its own: nothing to hold.
    if (waylandClipboard::inCharge() && waylandClipboard::copyText(text)) {
        return;
    }
    QClipboard* board = clipboard();
    if (!board) {
        return;
    }
    auto* data = new HeldText(m_hold);
    const std::unique_ptr<QMimeData> plain(mimeDataForText(text));
    for (const QString& format : plain->formats()) {
        data->setData(format, plain->data(format));
    }
    *m_hold = {};
    m_hold->set = true;
    board->setMimeData(data, QClipboard::Clipboard);
}

void ConsoleDesktop::holdClipboard(std::chrono::milliseconds limit)
{
    QClipboard* board = clipboard();
    if (!board || !m_hold->set || m_hold->fetched || !board->ownsClipboard()) {
        return;
    }
    QEventLoop loop;
    m_hold->waiting = &loop;
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    QObject::connect(board, &QClipboard::changed, &loop, [board, &loop](QClipboard::Mode mode) {
        if (mode == QClipboard::Clipboard && !board->ownsClipboard()) {
            loop.quit();
        }
    });
    loop.exec();
}

QList<PasteboardItem> ConsoleDesktop::readSelection(SelectionSource source)
{
    if (waylandClipboard::inCharge()) {
        return waylandClipboard::read(source);
    }
    QClipboard* board = clipboard();
    return board ? readClipboard(*board, source) : QList<PasteboardItem>();
}

void ConsoleDesktop::filesChanged(const QStringList&) {}

} // namespace tallyvox
