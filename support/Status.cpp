#include "support/Status.h"

#include <cerrno>

namespace tallyvox {

Status statusFromErrno(int error)
{
    switch (error) {
    case 0:
        return noErr;
    case ENOENT:
    case ENOTDIR:
        return fnfErr;
    case EINVAL:
        return paramErr;
    default:
        return ioErr;
    }
}

} // namespace tallyvox
