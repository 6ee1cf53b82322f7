// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The K520 authors
#include "link/port/posix/radioLine.h"

#include <termios.h>

namespace k520 {

bool setRadioLine(int fd) noexcept {
    termios line{};
    if (::tcgetattr(fd, &line) != 0) {
        return false;
    }
    ::cfmakeraw(&line);
    line.c_iflag &= ~static_cast<tcflag_t>(IXOFF | IXANY | INPCK);
    line.c_cflag &= ~static_cast<tcflag_t>(CSTOPB | PARODD | CRTSCTS);
    line.c_cflag |= CLOCAL | CREAD;
    line.c_cc[VMIN] = 0;
    line.c_cc[VTIME] = 0;
    return ::cfsetspeed(&line, B9600) == 0 && ::tcsetattr(fd, TCSANOW, &line) == 0;
}

}  // namespace k520
