// SPDX-License-Identifier: BSD-3-Clause
// moodsetctl is this program and a module with all commands. The libraries of the module double the
// time that a start takes, so the program prints a list of moodsets by itself.
#include "commandsmodule.h"
#include "output.h"
#include "plainlist.h"

int main(int argc, char** argv)
{
    Output::keepPlaces();
    const std::optional<int> status = printPlainList(argc, argv);
    return status ? *status : runCommands(argc, argv);
}
