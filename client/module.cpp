// SPDX-License-Identifier: BSD-3-Clause
#include "commandline.h"
#include "commands/allcommands.h"
#include "envelope.h"
#include "helptext.h"
#include "output.h"
#include "text.h"

#include <QCoreApplication>

namespace {

/// Runs the command and returns its outcome.
Outcome carryOut(const CommandLine& line)
{
    if (!line.error.isEmpty()) {
        return Outcome::failed(line.error, ExitStatus::Usage);
    }
    if (line.wantsVersion) {
        const QString version = QStringLiteral(MOODSETD_VERSION);
        return Outcome::done(
            QStringLiteral("moodsetctl %1\n").arg(version), {{QStringLiteral("version"), version}});
    }
    if (line.wantsHelp) {
        return Outcome::done(
            line.invocation.command ? commandHelp(*line.invocation.command)
                                    : overviewHelp(allCommands()),
            {});
    }
    return line.invocation.command->run(line.invocation);
}

/// Prints what has come of the words; the exit status of the process.
ExitStatus print(const CommandLine& line, const Outcome& outcome)
{
    const Invocation& invocation = line.invocation;
    QString fault;
    if (invocation.json) {
        fault = Output::writeJson(
            jsonLine(invocation.command ? invocation.command->name : nullptr, outcome));
    } else if (!invocation.quiet) {
        fault = Output::writeText(outcome.text);
    }
    Output::writeError(fault);
    Output::writeError(outcome.error);
    return fault.isEmpty() || outcome.status != ExitStatus::Done ? outcome.status
                                                                 : ExitStatus::Failed;
}

} // namespace

/// The tool from its arguments to its exit status. moodsetctl calls it by this name.
extern "C" Q_DECL_EXPORT int runMoodsetctl(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    assumeUtf8();
    installTranslation(&application);
    const CommandLine line =
        CommandLine::parse(QCoreApplication::arguments().mid(1), allCommands());
    return int(print(line, carryOut(line)));
}
