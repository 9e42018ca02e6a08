#include "shell/CommandBinding.h"

#include <QAbstractButton>
#include <QAction>

namespace tallyvox {

void bindCommands(QObject* root, QObject* context,
                  const std::function<void(QObject* control, CommandId command)>& issue)
{
    for (QAction* action : root->findChildren<QAction*>()) {
        const CommandId command = commandOf(*action);
        if (command.code != 0) {
            QObject::connect(action, &QAction::triggered, context,
                             [issue, action, command] { issue(action, command); });
        }
    }
    for (QAbstractButton* button : root->findChildren<QAbstractButton*>()) {
        const CommandId command = commandOf(*button);
        if (command.code != 0) {
            QObject::connect(button, &QAbstractButton::clicked, context,
                             [issue, button, command] { issue(button, command); });
        }
    }
}

} // namespace tallyvox
