// SPDX-License-Identifier: BSD-3-Clause
#include "commandline.h"
#include "commands.h"
#include "moodsetcommands.h"

#include <QCoreApplication>
#include <QTextStream>

#include <cstdio>
#include <cstdlib>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const CommandLine line = CommandLine::parse(QCoreApplication::arguments().mid(1));
    if (!line.error.isEmpty()) {
        return fail(line.error);
    }

    switch (line.command) {
    case CommandLine::Command::Help:
        QTextStream(stdout) << CommandLine::helpText();
        return EXIT_SUCCESS;
    case CommandLine::Command::Version:
        QTextStream(stdout) << "moodsetctl " << MOODSETD_VERSION << '\n';
        return EXIT_SUCCESS;
    case CommandLine::Command::Photos:
        return showPhotos(line.folder, line.watch);
    case CommandLine::Command::Watch:
        return watchPhotos(line.folder);
    case CommandLine::Command::Wait:
        return waitForIdle(line.log, line.progress);
    case CommandLine::Command::Index:
        return indexPicture(line.subject);
    case CommandLine::Command::Moodsets:
        return showMoodsets();
    case CommandLine::Command::Set:
        return setMoodset(line.subject);
    case CommandLine::Command::Create:
        return createMoodset(line.subject);
    case CommandLine::Command::Favorite:
        return setFavorite(line.subject, line.favorite);
    case CommandLine::Command::Remove:
        return removeMoodset(line.subject);
    case CommandLine::Command::Install:
        return installPackage(line.subject);
    case CommandLine::Command::Refresh:
        return refreshMoodsets();
    }
    return EXIT_FAILURE;
}
