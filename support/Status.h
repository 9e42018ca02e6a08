#pragma once

#include <QtGlobal>

namespace tallyvox {

/// A 16-bit status, as the file and service functions return it; 0 is success.
using Status = qint16;

inline constexpr Status noErr = 0;
inline constexpr Status ioErr = -36;
inline constexpr Status fnfErr = -43;
inline constexpr Status paramErr = -50;
inline constexpr Status dragNotAcceptedErr = -1857;
inline constexpr Status eventNotHandledErr = -9874;

/// Maps a POSIX errno to the nearest status: ENOENT is -43, EINVAL -50, anything else -36.
Status statusFromErrno(int error);

} // namespace tallyvox
