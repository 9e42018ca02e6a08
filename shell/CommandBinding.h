#pragma once

#include "shell/Command.h"

#include <functional>

class QObject;

namespace tallyvox {

/// Connects every action and button below root that carries a command, so that
/// triggering it calls issue with the control and its command.
void bindCommands(QObject* root, QObject* context,
                  const std::function<void(QObject* control, CommandId command)>& issue);

} // namespace tallyvox
