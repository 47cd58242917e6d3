// SPDX-License-Identifier: BSD-3-Clause
#include "allcommands.h"

#include "librarycommands.h"
#include "moodsetcommands.h"

const std::vector<Command>& allCommands()
{
    static const std::vector<Command> commands{
        statusCommand(),    moodsetsCommand(), showCommand(),     themeCommand(),
        previewCommand(),   colorsCommand(),   setCommand(),      editCommand(),
        undoCommand(),      createCommand(),   favoriteCommand(), removeCommand(),
        photosCommand(),    watchCommand(),    indexCommand(),    validateCommand(),
        installCommand(),   refreshCommand(),  waitCommand(),     doctorCommand(),
        cleanCommand(),     backupCommand(),   restoreCommand(),  helpCommand(),
        completionCommand()};
    return commands;
}
