#include "shell/ConsoleView.h"

#include "support/Desktop.h"

namespace tallyvox {

void ConsoleView::showErrorWindow(const QString& text)
{
    m_errorShown = true;
    m_desktop.alert(text);
}

} // namespace tallyvox
