// SPDX-License-Identifier: BSD-3-Clause
// Feeds the files of a corpus to a target. A fault of the target ends the process, and the last
// name in the output is that of the file.
#include "fuzztarget.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstdio>
#include <exception>

namespace {

/// False, with a word about it, if the file cannot be read or the target throws.
bool replay(const QString& path)
{
    fprintf(stderr, "%s\n", qPrintable(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        fprintf(stderr, "cannot be read: %s\n", qPrintable(file.errorString()));
        return false;
    }
    try {
        runTarget(file.readAll());
    } catch (const std::exception& exception) {
        fprintf(stderr, "exception: %s\n", exception.what());
        return false;
    } catch (...) {
        fputs("exception\n", stderr);
        return false;
    }
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    if (argc != 2) {
        fputs("usage: replay-NAME CORPUS\n", stderr);
        return 2;
    }
    const QDir corpus(QString::fromLocal8Bit(argv[1]));
    const QStringList names = corpus.entryList(QDir::Files | QDir::Hidden, QDir::Name);
    if (names.isEmpty()) {
        fprintf(stderr, "no files in %s\n", argv[1]);
        return 1;
    }
    for (const QString& name : names) {
        if (!replay(corpus.filePath(name))) {
            return 1;
        }
    }
    fprintf(stderr, "%d files replayed\n", int(names.size()));
    return 0;
}
