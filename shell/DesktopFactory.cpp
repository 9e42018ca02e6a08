#include "shell/DesktopFactory.h"

#include "shell/ConsoleDesktop.h"
#include "shell/QtDesktop.h"

namespace tallyvox {

std::unique_ptr<Desktop> makeDesktop(const DesktopChoice& choice)
{
    if (choice.kind == DesktopChoice::Kind::Console) {
        return std::make_unique<ConsoleDesktop>(*choice.out, *choice.err, choice.saveAsPath);
    }
    return std::make_unique<QtDesktop>();
}

} // namespace tallyvox
