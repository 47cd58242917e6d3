// SPDX-License-Identifier: BSD-3-Clause
#include "commandline.h"
#include "commands/allcommands.h"
#include "envelope.h"
#include "helptext.h"
#include "output.h"
#include "printabletext.h"
#include "text.h"

#include <QCoreApplication>
#include <QTextCodec>
#include <QTextStream>

#include <cstdio>
#include <cstring>
#include <langinfo.h>

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

void printError(const QString& error)
{
    if (!error.isEmpty()) {
        QTextStream(stderr) << "moodsetctl: " << printableText(error) << '\n';
    }
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
    printError(fault);
    printError(outcome.error);
    return fault.isEmpty() || outcome.status != ExitStatus::Done ? outcome.status
                                                                 : ExitStatus::Failed;
}

/// Where the locale is not installed, names and texts are taken for what they nearly always are.
void assumeUtf8()
{
    if (std::strcmp(nl_langinfo(CODESET), "ANSI_X3.4-1968") == 0) {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    }
}

} // namespace

int main(int argc, char** argv)
{
    Output::keepPlaces();
    QCoreApplication application(argc, argv);
    assumeUtf8();
    installTranslation(&application);
    const CommandLine line =
        CommandLine::parse(QCoreApplication::arguments().mid(1), allCommands());
    const Outcome outcome = carryOut(line);
    return int(print(line, outcome));
}
