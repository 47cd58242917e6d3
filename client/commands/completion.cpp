// SPDX-License-Identifier: BSD-3-Clause
#include "allcommands.h"
#include "completion/candidates.h"
#include "completion/shellscript.h"
#include "invocation.h"
#include "librarycommands.h"
#include "text.h"

namespace {

Outcome run(const Invocation& invocation)
{
    if (invocation.has("words")) {
        return Outcome::done(Candidates::find(allCommands(), invocation.arguments).text(), {});
    }
    const QString shell = invocation.argument();
    const QString script = completionScript(shell);
    return script.isEmpty() ? Outcome::failed(
               QStringLiteral("completion: ")
                   + Text::tr("%1 is none of bash, zsh and fish").arg(shell),
               ExitStatus::Usage)
                            : Outcome::done(script, {});
}

} // namespace

Command completionCommand()
{
    return {
        "completion",
        Command::Group::Shell,
        QT_TRANSLATE_NOOP("Text", "print the script for completion in a shell"),
        QT_TRANSLATE_NOOP(
            "Text",
            "Prints a script for bash, zsh or fish. With it, the shell completes "
            "commands, options, files and the names of moodsets. Packages install "
            "it. Without a package:\n"
            "bash: source <(moodsetctl completion bash)\n"
            "zsh: source <(moodsetctl completion zsh)\n"
            "fish: moodsetctl completion fish | source"),
        {{"SHELL", ValueKind::Shell, false, true}},
        {{"words", nullptr, ValueKind::Flag,
          QT_TRANSLATE_NOOP(
              "Text", "print the possible values of the last word, for these scripts")}},
        {{"completion bash", QT_TRANSLATE_NOOP("Text", "print the script for bash")}},
        run};
}
