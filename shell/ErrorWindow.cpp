#include "shell/ErrorWindow.h"

#include "ui_ErrorWindow.h"

#include <QAction>
#include <QLabel>

namespace tallyvox {

namespace {
constexpr char messageControl[] = "CNTL_1";
}

ErrorWindow::ErrorWindow(const QString& text, QAction* ok, QWidget* parent)
    : QWidget(parent, Qt::Window)
{
    Ui::ErrorWindow ui;
    ui.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    findChild<QLabel*>(QLatin1String(messageControl))->setText(text);
    connect(ui.okButton, &QPushButton::clicked, ok, &QAction::trigger);
}

QString ErrorWindow::text() const
{
    return findChild<QLabel*>(QLatin1String(messageControl))->text();
}

} // namespace tallyvox
