#pragma once

#include "shell/Command.h"

#include <QWidget>

namespace tallyvox {

/// The window reporting a failed batch run. It has no handler of its own: its OK
/// button's 'ok  ' goes to the application, which quits.
class ErrorWindow : public QWidget {
    Q_OBJECT
public:
    explicit ErrorWindow(const QString& text, QWidget* parent = nullptr);

    QString text() const;

signals:
    void commandIssued(tallyvox::CommandId command);
};

} // namespace tallyvox
