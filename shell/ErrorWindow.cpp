#include "shell/ErrorWindow.h"

#include "shell/CommandBinding.h"
#include "ui_ErrorWindow.h"

#include <QLabel>

namespace tallyvox {

namespace {
constexpr char messageControl[] = "CNTL_1";
}

ErrorWindow::ErrorWindow(const QString& text, QWidget* parent) : QWidget(parent, Qt::Window)
{
    Ui::ErrorWindow ui;
    ui.setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    findChild<QLabel*>(QLatin1String(messageControl))->setText(text);
    bindCommands(this, this, [this](QObject*, CommandId command) { emit commandIssued(command); });
}

QString ErrorWindow::text() const
{
    return findChild<QLabel*>(QLatin1String(messageControl))->text();
}

} // namespace tallyvox
