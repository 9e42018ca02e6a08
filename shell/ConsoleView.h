#pragma once

#include "shell/BatchView.h"

namespace tallyvox {

class Desktop;

/// The batch run's view in console mode: no window. Status lines and progress are
/// dropped; the error window's text goes out as an alert, which console mode prints.
class ConsoleView final : public BatchView {
public:
    explicit ConsoleView(Desktop& desktop) : m_desktop(desktop) {}

    void showStatus(const QString&, StatusTarget) override {}
    void setRunning(bool) override {}
    void setProgressMaximum(int) override {}
    void setProgressMinimum(int) override {}
    void setProgressValue(int) override {}
    void setProgressVisible(bool) override {}
    void showErrorWindow(const QString& text) override;

    bool errorShown() const { return m_errorShown; }

private:
    Desktop& m_desktop;
    bool m_errorShown = false;
};

} // namespace tallyvox
