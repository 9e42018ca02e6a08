#pragma once

#include "shell/BatchView.h"
#include "shell/ErrorWindow.h"

#include <QDialog>
#include <QMainWindow>
#include <QPointer>

class QAction;
class QLabel;
class QMenu;
class QProgressBar;
class QPushButton;

namespace tallyvox {

class Desktop;

/// The main window's controls, named after their (signature, id) identifiers.
namespace mainControls {
inline constexpr char StatusText[] = "CNTL_1";
inline constexpr char BusyItem[] = "CNTL_2";
inline constexpr char IdleItem[] = "CNTL_4";
inline constexpr char ProgressBar[] = "CNTL_5";
inline constexpr char ProgressText[] = "CNTL_6";
inline constexpr char StopButton[] = "CNTL_7";
inline constexpr char HelpMenu[] = "helpMenu";
} // namespace mainControls

/// What the window's menu items and buttons trigger; the application connects each to
/// its command.
struct MainWindowActions {
    QAction* open = nullptr;
    QAction* preferences = nullptr;
    QAction* quit = nullptr;
    QAction* help = nullptr;
    QAction* about = nullptr;
    /// The stop button's.
    QAction* stop = nullptr;
    /// The OK button's of every error window.
    QAction* errorOk = nullptr;
};

/// The single main window: status lines, progress, the stop button, and the whole
/// window as a drop target for files.
class MainWindow : public QMainWindow, public BatchView {
    Q_OBJECT
public:
    /// The desktop is used only to beep when a drop cannot be delivered.
    explicit MainWindow(Desktop& desktop, QWidget* parent = nullptr);
    ~MainWindow() override;

    QMenu* helpMenu() const;
    const MainWindowActions& actions() const { return m_actions; }
    /// The error window last shown, while it is open.
    ErrorWindow* errorWindow() const { return m_errorWindow; }
    /// Opens the About window, or brings it forward.
    void showAboutWindow();
    /// The About window while it is open, else null.
    QDialog* aboutWindow() const { return m_aboutWindow; }

    void showStatus(const QString& text, StatusTarget target) override;
    void setRunning(bool running) override;
    void setProgressMaximum(int maximum) override;
    void setProgressMinimum(int minimum) override;
    void setProgressValue(int value) override;
    void setProgressVisible(bool visible) override;
    void showErrorWindow(const QString& text) override;

signals:
    /// Dropped files, one entry per dragged item, delivered after the drop returned.
    void documentsDropped(const QStringList& paths);
    /// The close box: the application decides.
    void closeRequested();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void setHighlighted(bool on);
    /// Shows a status line's text as far as the window's width allows, long names elided
    /// in the middle; the whole text stays the line's tooltip and accessible name.
    void fitStatusLine(QLabel* label);

    Desktop& m_desktop;
    QLabel* m_statusText;
    QLabel* m_busyItem;
    QLabel* m_idleItem;
    QProgressBar* m_progressBar;
    QLabel* m_progressText;
    QPushButton* m_stopButton;
    QWidget* m_highlight;
    MainWindowActions m_actions;
    QPointer<ErrorWindow> m_errorWindow;
    QPointer<QDialog> m_aboutWindow;
    bool m_dragAccepted = false;
};

} // namespace tallyvox
