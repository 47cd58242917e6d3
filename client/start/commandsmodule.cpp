// SPDX-License-Identifier: BSD-3-Clause
#include "commandsmodule.h"

#include "outcome.h"
#include "output.h"

#include <QDir>
#include <QFileInfo>

#include <dlfcn.h>

namespace {

/// The module is in this program's directory if both were built, and in COMMANDS_FROM_BIN if they
/// are installed.
QString modulePath()
{
    const QFileInfo program(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget());
    const QDir folder = program.dir();
    const QString beside = folder.filePath(QStringLiteral("moodsetctl-commands.so"));
    return QDir::cleanPath(
        QFileInfo::exists(beside) ? beside : folder.filePath(QStringLiteral(COMMANDS_FROM_BIN)));
}

} // namespace

int runCommands(int argc, char** argv)
{
    using Run = int (*)(int, char**);
    // It stays loaded until the process ends.
    void* const module = dlopen(QFile::encodeName(modulePath()).constData(), RTLD_NOW | RTLD_LOCAL);
    const auto run = module ? reinterpret_cast<Run>(dlsym(module, "runMoodsetctl")) : nullptr;
    if (!run) {
        // The translations of texts are not loaded yet.
        Output::writeError(
            QStringLiteral("the commands cannot be loaded: %1").arg(QFile::decodeName(dlerror())));
        return int(ExitStatus::Failed);
    }
    return run(argc, argv);
}
