// SPDX-License-Identifier: BSD-3-Clause
#include "allcommands.h"
#include "helptext.h"
#include "invocation.h"
#include "librarycommands.h"
#include "suggestion.h"
#include "text.h"

namespace {

Outcome run(const Invocation& invocation)
{
    if (invocation.has("man")) {
        return Outcome::done(manPage(allCommands()), {});
    }
    if (invocation.arguments.isEmpty()) {
        return Outcome::done(overviewHelp(allCommands()), {});
    }
    QStringList names;
    for (const Command& command : allCommands()) {
        if (QLatin1String(command.name) == invocation.argument()) {
            return Outcome::done(commandHelp(command), {});
        }
        names.append(QLatin1String(command.name));
    }
    return Outcome::failed(
        Text::tr("no such command: %1").arg(invocation.argument())
            + didYouMean(invocation.argument(), names),
        ExitStatus::Usage);
}

} // namespace

Command helpCommand()
{
    return {
        "help",
        Command::Group::Shell,
        QT_TRANSLATE_NOOP("Text", "show all commands, or how to use one"),
        QT_TRANSLATE_NOOP("Text", "Shows all commands, or how to use one of them, with examples."),
        {{"COMMAND", ValueKind::Command, false}},
        {{"man", nullptr, ValueKind::Flag,
          QT_TRANSLATE_NOOP("Text", "print the manual page instead")}},
        {{"help set", QT_TRANSLATE_NOOP("Text", "see how to use set")}},
        run};
}
