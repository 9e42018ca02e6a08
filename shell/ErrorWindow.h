#pragma once

#include <QWidget>

class QAction;

namespace tallyvox {

/// The window reporting a failed batch run. It has no handler of its own: its OK button
/// triggers the action it is given, the application's 'ok  ', which quits.
class ErrorWindow : public QWidget {
    Q_OBJECT
public:
    ErrorWindow(const QString& text, QAction* ok, QWidget* parent = nullptr);

    QString text() const;
};

} // namespace tallyvox
