// SPDX-License-Identifier: BSD-3-Clause
// Measures the time from the start of "moodsetctl moodsets" to its first line, and the time in
// which sqlite3 prints the same rows, in turns. Prints the table.
#include "arguments.h"
#include "content/queryagentdatabase.h"
#include "listedlibrary.h"
#include "measuredprocess.h"
#include "report.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QTemporaryDir>

#include <array>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int StandardMoodsets = 1000;
/// The limit for the time to the first line, relative to sqlite3's whole time.
constexpr double Budget = 3;

const char* const Statement =
    "SELECT file.id, file.displayName, favorite, directory.path || '/' || file.fileName,"
    " primaryColor, secondaryColor, highlightColor, secondaryHighlightColor"
    " FROM moodset JOIN file ON file.id = moodset.fileId"
    " JOIN directory ON directory.id = file.directoryId ORDER BY favorite DESC, timestamp";

/// The times in ms that a process takes to its first output and to its end.
struct Times
{
    double first = 0;
    double all = 0;
};

Times run(const std::vector<QByteArray>& words)
{
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (const QByteArray& word : words) {
        pointers.push_back(const_cast<char*>(word.constData()));
    }
    pointers.push_back(nullptr);
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        giveUp("cannot make a pipe");
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    QElapsedTimer timer;
    timer.start();
    pid_t child = 0;
    if (posix_spawnp(&child, pointers.front(), &actions, nullptr, pointers.data(), environ) != 0) {
        giveUp("cannot start " + words.front());
    }
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    constexpr double nsPerMs = 1e6;
    Times times;
    std::array<char, 65536> buffer{};
    qint64 size = 0;
    ssize_t count = 0;
    while ((count = read(ends[0], buffer.data(), buffer.size())) > 0) {
        if (size == 0) {
            times.first = double(timer.nsecsElapsed()) / nsPerMs;
        }
        size += count;
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    times.all = double(timer.nsecsElapsed()) / nsPerMs;
    if (size == 0 || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        giveUp(words.front() + " has failed");
    }
    return times;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    Arguments arguments(
        QStringLiteral("Measures moodsetctl's first line, of a database in a temporary folder."),
        Arguments::NoFolder);
    arguments.addRounds("41");
    arguments.read();
    const QTemporaryDir folder;
    qputenv("XDG_DATA_HOME", QFile::encodeName(folder.path()));
    const QString database = QueryAgentDatabase::filePath();
    if (!QDir().mkpath(QFileInfo(database).path())) {
        giveUp("cannot make a temporary folder");
    }
    makeLibrary(database, MoodsetContent::Moodset, StandardMoodsets);

    const std::vector<QByteArray> client{
        QFile::encodeName(QCoreApplication::applicationDirPath() + QStringLiteral("/moodsetctl")),
        "moodsets"};
    const std::vector<QByteArray> bare{
        "sqlite3", "-readonly", QFile::encodeName(database), Statement};
    run(client);
    run(bare);
    Series first;
    Series all;
    Series printed;
    for (int round = 0; round < arguments.number("rounds"); ++round) {
        const Times times = run(client);
        first.push_back(times.first);
        all.push_back(times.all);
        printed.push_back(run(bare).all);
    }
    Report report;
    const auto ms = QStringLiteral("ms");
    const auto sqlite = QStringLiteral("sqlite3, all lines");
    report.add(Comparison{
        QStringLiteral("moodsetctl moodsets, 1000 of them, first line"), ms, first, sqlite, printed,
        Budget});
    report.add(Comparison{
        QStringLiteral("moodsetctl moodsets, 1000 of them, all lines"), ms, all, sqlite, printed});
    return arguments.finish(report);
}
