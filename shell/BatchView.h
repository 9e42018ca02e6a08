#pragma once

#include <QString>

namespace tallyvox {

/// Which status line ShowStatus writes: the status text or the progress text.
enum class StatusTarget { StatusText = 1, ProgressText = 2 };

/// What the batch run shows while it works: the main window, or nothing in console mode.
class BatchView {
public:
    BatchView() = default;
    virtual ~BatchView() = default;
    BatchView(const BatchView&) = delete;
    BatchView& operator=(const BatchView&) = delete;

    /// Sets a status line and lets it draw while the caller keeps the thread busy.
    virtual void showStatus(const QString& text, StatusTarget target) = 0;
    /// Busy item and stop button during a run, the idle item otherwise.
    virtual void setRunning(bool running) = 0;
    virtual void setProgressMaximum(int maximum) = 0;
    virtual void setProgressMinimum(int minimum) = 0;
    virtual void setProgressValue(int value) = 0;
    /// The progress bar and the progress text together.
    virtual void setProgressVisible(bool visible) = 0;
    /// The non-modal error window with its text; its OK button quits.
    virtual void showErrorWindow(const QString& text) = 0;
};

} // namespace tallyvox
