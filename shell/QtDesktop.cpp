#include "shell/QtDesktop.h"

#include "shell/ApplicationChooser.h"
#include "shell/SelectionItems.h"
#include "shell/WaylandClipboard.h"
#include "support/SystemLog.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QMimeDatabase>
#include <QPushButton>

namespace tallyvox {

namespace {

constexpr char ownDesktopId[] = "com.okaluna.Tallyvox.desktop";

void runAlert(QWidget* parent, QMessageBox::Icon icon, const QString& text,
              const QString& informative)
{
    QMessageBox box(parent);
    box.setIcon(icon);
    box.setWindowTitle(QCoreApplication::applicationName());
    box.setText(text);
    box.setInformativeText(informative);
    box.addButton(QCoreApplication::translate("tallyvox::QtDesktop", "OK"),
                  QMessageBox::AcceptRole);
    // A result asked for from another application (a service) arrives while that one has
    // the focus, and the window manager may refuse Tallyvox the focus and open the alert
    // behind it: the result would wait unseen until the user came to Tallyvox. Kept
    // above, it shows at once.
    if (QGuiApplication::applicationState() != Qt::ApplicationActive) {
        box.setWindowFlag(Qt::WindowStaysOnTopHint);
    }
    box.exec();
}

} // namespace

void QtDesktop::alert(const QString& message)
{
    // The whole message is the message text; a blank keeps the informative line.
    runAlert(m_window.data(), QMessageBox::NoIcon, message, QStringLiteral(" "));
}

void QtDesktop::stopAlert(const QString& message, const QString& explanation)
{
    beep();
    runAlert(m_window.data(), QMessageBox::Critical, message, explanation);
}

QStringList QtDesktop::chooseFilesToOpen(const QString& prompt)
{
    QFileDialog dialog(m_window.data(), prompt);
    dialog.setFileMode(QFileDialog::ExistingFiles);
    dialog.setFilter(dialog.filter() | QDir::Hidden | QDir::System);
    dialog.setLabelText(QFileDialog::Accept,
                        QCoreApplication::translate("tallyvox::QtDesktop", "Open"));
    // The user's own folders, not the folder the program happened to be started in.
    dialog.setDirectory(QFileInfo(m_openFolder).isDir() ? m_openFolder : QDir::homePath());
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    QStringList chosen = dialog.selectedFiles();
    if (!chosen.isEmpty()) {
        m_openFolder = QFileInfo(chosen.constFirst()).absolutePath();
    }
    return chosen;
}

QString QtDesktop::chooseSavePath(const QString& proposedName)
{
    return QFileDialog::getSaveFileName(m_window.data(), QString(),
                                        QDir::home().filePath(proposedName));
}

QtDesktop::QtDesktop() : m_applications(QString::fromLatin1(ownDesktopId)) {}

void QtDesktop::openInTextEditor(const QString& path)
{
    // Chosen by the list's type: sniffing its content would take a list of C-like words
    // for source code. When nothing opens it, the file manager at least shows where it is.
    if (!m_applications.open(QUrl::fromLocalFile(path), QStringLiteral("text/plain"))) {
        systemLog(QStringLiteral("No text editor opened \"%1\"; showing it in the file manager")
                      .arg(path));
        showInFileManager(path);
    }
}

bool QtDesktop::openFile(const QString& path)
{
    return QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

bool QtDesktop::openUrl(const QUrl& url)
{
    // Local pages (the installed guide) by their name's type, so that Tallyvox, which
    // lists HTML among its types, never opens its own help as a document.
    if (url.isLocalFile()) {
        const QMimeType type =
            QMimeDatabase().mimeTypeForFile(url.toLocalFile(), QMimeDatabase::MatchExtension);
        return m_applications.open(url, type.name());
    }
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
    if (QWidget* window = m_window.data()) {
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
    if (waylandClipboard::inCharge() && waylandClipboard::copyText(text)) {
        return;
    }
    QGuiApplication::clipboard()->setMimeData(mimeDataForText(text), QClipboard::Clipboard);
}

QList<PasteboardItem> QtDesktop::readSelection(SelectionSource source)
{
    if (waylandClipboard::inCharge()) {
        return waylandClipboard::read(source);
    }
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
