// SPDX-License-Identifier: BSD-3-Clause
#include "terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

int Terminal::outputColumns()
{
    constexpr int usualColumns = 80;
    if (isatty(STDOUT_FILENO) != 1) {
        return 0;
    }
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col
                                                                           : usualColumns;
}

bool Terminal::showsErrors()
{
    return isatty(STDERR_FILENO) == 1;
}
