// SPDX-License-Identifier: BSD-3-Clause
#include "terminalrun.h"

#include <cstdlib>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

TerminalRun TerminalRun::run(const QString& program, const QStringList& arguments, int columns)
{
    std::vector<QByteArray> words{program.toLocal8Bit()};
    for (const QString& argument : arguments) {
        words.push_back(argument.toLocal8Bit());
    }
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (QByteArray& word : words) {
        pointers.push_back(word.data());
    }
    pointers.push_back(nullptr);

    winsize size{};
    size.ws_col = static_cast<unsigned short>(columns);
    size.ws_row = 24;
    int terminal = -1;
    const pid_t child = forkpty(&terminal, nullptr, nullptr, &size);
    if (child == 0) {
        execv(pointers.front(), pointers.data());
        _exit(127);
    }
    TerminalRun result;
    if (child < 0) {
        return result;
    }
    QByteArray output;
    char buffer[4096];
    ssize_t count = 0;
    // The read fails once the program has closed the terminal.
    while ((count = read(terminal, buffer, sizeof buffer)) > 0) {
        output.append(buffer, int(count));
    }
    close(terminal);
    int status = 0;
    waitpid(child, &status, 0);
    if (WIFEXITED(status)) {
        result.exitCode = WEXITSTATUS(status);
    }
    result.output = QString::fromUtf8(output.replace("\r\n", "\n"));
    return result;
}
