#include "shell/ConsoleDesktop.h"

#include "shell/SelectionItems.h"
#include "support/SystemLog.h"

#include <QGuiApplication>

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

ConsoleDesktop::ConsoleDesktop(QTextStream& out, QTextStream& err, QString saveAsPath)
    : m_out(out), m_err(err), m_saveAsPath(std::move(saveAsPath))
{}

void ConsoleDesktop::printLine(const QString& line)
{
    m_out << line << '\n';
    m_out.flush();
}

void ConsoleDesktop::alert(const QString& message)
{
    printLine(message);
}

void ConsoleDesktop::stopAlert(const QString& message, const QString&)
{
    printLine(message);
}

QStringList ConsoleDesktop::chooseFilesToOpen(const QString&)
{
    m_err << "tallyvox: the open panel is not available in console mode\n";
    m_err.flush();
    return {};
}

QString ConsoleDesktop::chooseSavePath(const QString&)
{
    return m_saveAsPath;
}

void ConsoleDesktop::openInTextEditor(const QString& path)
{
    printLine(QStringLiteral("open ") + path);
}

bool ConsoleDesktop::openFile(const QString& path)
{
    printLine(QStringLiteral("open ") + path);
    return true;
}

bool ConsoleDesktop::openUrl(const QUrl& url)
{
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
    if (QClipboard* board = clipboard())
        board->setMimeData(mimeDataForText(text), QClipboard::Clipboard);
}

QList<PasteboardItem> ConsoleDesktop::readSelection(SelectionSource source)
{
    QClipboard* board = clipboard();
    return board ? readClipboard(*board, source) : QList<PasteboardItem>();
}

void ConsoleDesktop::filesChanged(const QStringList&) {}

} // namespace tallyvox
