#include "shell/MainWindow.h"

#include "shell/AboutWindow.h"
#include "shell/DropTarget.h"
#include "shell/ErrorWindow.h"
#include "support/Desktop.h"
#include "ui_MainWindow.h"

#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QPainter>
#include <QProgressBar>
#include <QPushButton>

namespace tallyvox {

namespace {

// Status lines hold what a 255-byte toolbox string held.
constexpr qsizetype statusLimit = 255;

// The property that keeps a status line's whole text while the label shows what fits.
constexpr char wholeTextProperty[] = "wholeText";

// The most lines the wrapping status line takes before its text is elided: room for the
// help text in languages longer than English (German, French: about a third longer).
constexpr int statusLines = 4;

// text as it fits into lines lines of width pixels: a word wider than a line is elided in
// its middle, and a text longer than all the lines together is elided in its middle too.
QString fittedText(const QString& text, const QFontMetrics& metrics, int width, int lines)
{
    if (width <= 0 || metrics.horizontalAdvance(text) <= width) {
        return text;
    }
    if (lines == 1) {
        return metrics.elidedText(text, Qt::ElideMiddle, width);
    }
    QStringList words = text.split(u' ');
    for (QString& word : words) {
        if (metrics.horizontalAdvance(word) > width) {
            word = metrics.elidedText(word, Qt::ElideMiddle, width);
        }
    }
    QString fitted = words.join(u' ');
    // Wrapping loses part of each line; a margin of one line's worth keeps within the lines.
    const int room = width * (lines - 1);
    if (metrics.horizontalAdvance(fitted) > room) {
        fitted = metrics.elidedText(fitted, Qt::ElideMiddle, room);
    }
    return fitted;
}

/// The drag highlight: a frame drawn 2 px inside the content area, above the controls.
class DropHighlight final : public QWidget {
public:
    explicit DropHighlight(QWidget* parent) : QWidget(parent)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setAttribute(Qt::WA_NoSystemBackground);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        constexpr int inset = 2;
        constexpr int thickness = 3;
        QPainter painter(this);
        const QRect outer = rect().adjusted(inset, inset, -inset, -inset);
        const QRect inner = outer.adjusted(thickness, thickness, -thickness, -thickness);
        QRegion ring = QRegion(outer).subtracted(QRegion(inner));
        painter.setClipRegion(ring);
        painter.fillRect(outer, palette().color(QPalette::Highlight));
    }
};

} // namespace

MainWindow::MainWindow(Desktop& desktop, QWidget* parent) : QMainWindow(parent), m_desktop(desktop)
{
    Ui::MainWindow ui;
    ui.setupUi(this);
    m_statusText = findChild<QLabel*>(QLatin1String(mainControls::StatusText));
    m_busyItem = findChild<QLabel*>(QLatin1String(mainControls::BusyItem));
    m_idleItem = findChild<QLabel*>(QLatin1String(mainControls::IdleItem));
    m_progressBar = findChild<QProgressBar*>(QLatin1String(mainControls::ProgressBar));
    m_progressText = findChild<QLabel*>(QLatin1String(mainControls::ProgressText));
    m_stopButton = findChild<QPushButton*>(QLatin1String(mainControls::StopButton));
    m_highlight = new DropHighlight(this);
    m_actions = {.open = ui.openAction,
                 .preferences = ui.preferencesAction,
                 .quit = ui.quitAction,
                 .help = ui.helpAction,
                 .about = ui.aboutAction,
                 .stop = new QAction(this),
                 .errorOk = new QAction(this)};
    connect(m_stopButton, &QPushButton::clicked, m_actions.stop, &QAction::trigger);
    // A long name never widens the window: the lines take the width they are given.
    for (QLabel* line : {m_statusText, m_progressText}) {
        line->setSizePolicy(QSizePolicy::Ignored, line->sizePolicy().verticalPolicy());
        line->setProperty(wholeTextProperty, line->text());
    }

    setAcceptDrops(true);
    setRunning(false);
    setProgressVisible(false);
}

MainWindow::~MainWindow()
{
    delete m_errorWindow;
}

QMenu* MainWindow::helpMenu() const
{
    return findChild<QMenu*>(QLatin1String(mainControls::HelpMenu));
}

void MainWindow::showStatus(const QString& text, StatusTarget target)
{
    QLabel* label = target == StatusTarget::StatusText     ? m_statusText
                    : target == StatusTarget::ProgressText ? m_progressText
                                                           : nullptr;
    if (label) {
        label->setProperty(wholeTextProperty, text.left(statusLimit));
        fitStatusLine(label);
        label->repaint();
    }
    // The caller keeps the thread busy; let the window system show the new text.
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
}

void MainWindow::fitStatusLine(QLabel* label)
{
    const QString whole = label->property(wholeTextProperty).toString();
    const int lines = label->wordWrap() ? statusLines : 1;
    label->setText(fittedText(whole, label->fontMetrics(), label->contentsRect().width(), lines));
    label->setToolTip(label->text() == whole ? QString() : whole);
    label->setAccessibleName(whole);
}

void MainWindow::setRunning(bool running)
{
    m_busyItem->setVisible(running);
    m_idleItem->setVisible(!running);
    m_stopButton->setEnabled(running);
    m_stopButton->setVisible(running);
}

void MainWindow::setProgressMaximum(int maximum)
{
    m_progressBar->setMaximum(maximum);
}

void MainWindow::setProgressMinimum(int minimum)
{
    m_progressBar->setMinimum(minimum);
}

void MainWindow::setProgressValue(int value)
{
    m_progressBar->setValue(value);
}

void MainWindow::setProgressVisible(bool visible)
{
    m_progressBar->setVisible(visible);
    m_progressText->setVisible(visible);
}

void MainWindow::showErrorWindow(const QString& text)
{
    m_errorWindow = new ErrorWindow(text, m_actions.errorOk);
    m_errorWindow->show();
}

void MainWindow::showAboutWindow()
{
    if (!m_aboutWindow) {
        m_aboutWindow = new AboutWindow(m_desktop, this);
    }
    m_aboutWindow->show();
    m_aboutWindow->raise();
    m_aboutWindow->activateWindow();
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    m_dragAccepted = event->mimeData() && DragHasFiles(*event->mimeData());
    if (!m_dragAccepted) {
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    setHighlighted(true);
}

void MainWindow::dragMoveEvent(QDragMoveEvent* event)
{
    if (m_dragAccepted) {
        event->acceptProposedAction();
    } else {
        event->ignore();
    }
}

void MainWindow::dragLeaveEvent(QDragLeaveEvent*)
{
    setHighlighted(false);
}

void MainWindow::dropEvent(QDropEvent* event)
{
    setHighlighted(false);
    if (!event->mimeData() || !DragHasFiles(*event->mimeData())) {
        event->ignore();
        return;
    }
    const QStringList entries = droppedEntries(*event->mimeData());
    if (!lastEntryUsable(entries)) {
        m_desktop.beep();
        event->ignore();
        return;
    }
    event->acceptProposedAction();
    // Delivered from the event loop, so the drop returns before any file is touched.
    QMetaObject::invokeMethod(
        this, [this, entries] { emit documentsDropped(entries); }, Qt::QueuedConnection);
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    emit closeRequested();
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    // The lines learn their new width once the layout has run.
    QMetaObject::invokeMethod(
        this,
        [this] {
            fitStatusLine(m_statusText);
            fitStatusLine(m_progressText);
        },
        Qt::QueuedConnection);
    if (centralWidget()) {
        m_highlight->setGeometry(centralWidget()->geometry());
    }
}

void MainWindow::setHighlighted(bool on)
{
    if (centralWidget()) {
        m_highlight->setGeometry(centralWidget()->geometry());
    }
    m_highlight->setVisible(on);
    if (on) {
        m_highlight->raise();
    }
}

} // namespace tallyvox
