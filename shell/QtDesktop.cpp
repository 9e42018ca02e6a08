#include "shell/QtDesktop.h"

#include "shell/SelectionItems.h"
#include "support/SystemLog.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QMainWindow>
#include <QMessageBox>
#include <QPushButton>

namespace tallyvox {

namespace {

// The one main window, found rather than held, so the desktop can exist before it.
QWidget* mainWindow()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        if (qobject_cast<QMainWindow*>(widget)) {
            return widget;
        }
    }
    return nullptr;
}

void runAlert(QWidget* parent, QMessageBox::Icon icon, const QString& text,
              const QString& informative)
{
    QMessageBox box(parent);
    box.setIcon(icon);
    box.setWindowTitle(QCoreApplication::applicationName());
    box.setText(text);
    box.setInformativeText(informative);
    box.addButton(QStringLiteral("OK"), QMessageBox::AcceptRole);
    box.exec();
}

} // namespace

void QtDesktop::alert(const QString& message)
{
    // The whole message is the message text; a blank keeps the informative line.
    runAlert(mainWindow(), QMessageBox::NoIcon, message, QStringLiteral(" "));
}

void QtDesktop::stopAlert(const QString& message, const QString& explanation)
{
    beep();
    runAlert(mainWindow(), QMessageBox::Critical, message, explanation);
}

QStringList QtDesktop::chooseFilesToOpen(const QString& prompt)
{
    QFileDialog dialog(mainWindow(), prompt);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setFilter(dialog.filter() | QDir::Hidden | QDir::System);
    dialog.setLabelText(QFileDialog::Accept, QStringLiteral("Open"));
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    return dialog.selectedFiles();
}

QString QtDesktop::chooseSavePath(const QString& proposedName)
{
    return QFileDialog::getSaveFileName(mainWindow(), QString(),
                                        QDir::home().filePath(proposedName));
}

void QtDesktop::openInTextEditor(const QString& path)
{
    // The default application for the .txt file is the user's text editor; not waited for.
    QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool QtDesktop::openFile(const QString& path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool QtDesktop::openUrl(const QUrl& url)
{
    return QDesktopServices::openUrl(url);
}

void QtDesktop::beep()
{
    QApplication::beep();
}

void QtDesktop::playSound(const QString&)
{
    // No sound-theme player is linked in; the sound is simply not played.
}

void QtDesktop::raiseApplication()
{
    if (QWidget* window = mainWindow()) {
        window->raise();
        window->activateWindow();
    }
}

void QtDesktop::log(const QString& line)
{
    systemLog(line);
}

void QtDesktop::setClipboardText(const QString& text)
{
    QGuiApplication::clipboard()->setMimeData(mimeDataForText(text), QClipboard::Clipboard);
}

QList<PasteboardItem> QtDesktop::readSelection(SelectionSource source)
{
    return readClipboard(*QGuiApplication::clipboard(), source);
}

void QtDesktop::filesChanged(const QStringList& paths)
{
    announceFilesChanged(paths);
}

void announceFilesChanged(const QStringList& paths)
{
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || paths.isEmpty()) {
        return;
    }
    QStringList urls;
    for (const QString& path : paths) {
        urls.append(QString::fromLatin1(QUrl::fromLocalFile(path).toEncoded()));
    }
    QDBusMessage signal = QDBusMessage::createSignal(
        QStringLiteral("/"), QStringLiteral("org.kde.KDirNotify"), QStringLiteral("FilesChanged"));
    signal << urls;
    bus.send(signal);
}

} // namespace tallyvox
