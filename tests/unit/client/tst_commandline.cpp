// SPDX-License-Identifier: BSD-3-Clause
#include "commandline.h"

#include <QDir>
#include <QtTest>

class CommandLineTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsCommands_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("command");
        const auto row = [](const char* text, CommandLine::Command command) {
            QTest::newRow(text) << QString::fromLatin1(text).split(QLatin1Char(' '))
                                << static_cast<int>(command);
        };
        row("--help", CommandLine::Command::Help);
        row("-h", CommandLine::Command::Help);
        row("photos --help", CommandLine::Command::Help);
        row("--version", CommandLine::Command::Version);
        row("-v", CommandLine::Command::Version);
        row("photos", CommandLine::Command::Photos);
        row("watch", CommandLine::Command::Watch);
        row("wait", CommandLine::Command::Wait);
        row("index a.jpg", CommandLine::Command::Index);
        row("moodsets", CommandLine::Command::Moodsets);
        row("set a.jpg", CommandLine::Command::Set);
        row("create a.jpg", CommandLine::Command::Create);
        row("favorite 7 on", CommandLine::Command::Favorite);
        row("remove 7", CommandLine::Command::Remove);
        row("install /a", CommandLine::Command::Install);
        row("refresh", CommandLine::Command::Refresh);
    }

    void readsCommands()
    {
        QFETCH(QStringList, arguments);
        QFETCH(int, command);

        const CommandLine line = CommandLine::parse(arguments);

        QCOMPARE(line.error, QString());
        QCOMPARE(static_cast<int>(line.command), command);
    }

    void readsOptions()
    {
        const CommandLine photos = CommandLine::parse(
            {QStringLiteral("photos"), QStringLiteral("--watch"), QStringLiteral("--folder=a")});
        QCOMPARE(photos.watch, true);
        QCOMPARE(photos.folder, QDir::current().filePath(QStringLiteral("a")));

        const CommandLine wait = CommandLine::parse(
            {QStringLiteral("wait"), QStringLiteral("--progress"), QStringLiteral("--log"),
             QStringLiteral("file")});
        QCOMPARE(wait.progress, true);
        QCOMPARE(wait.log, QStringLiteral("file"));

        const CommandLine index =
            CommandLine::parse({QStringLiteral("index"), QStringLiteral("a b.jpg")});
        QCOMPARE(index.subject, QStringLiteral("a b.jpg"));
    }

    void readsSwitches()
    {
        const auto favorite = [](const QString& state) {
            return CommandLine::parse(
                {QStringLiteral("favorite"), QStringLiteral("Coast light"), state});
        };

        QCOMPARE(favorite(QStringLiteral("on")).favorite, true);
        QCOMPARE(favorite(QStringLiteral("off")).favorite, false);
        QCOMPARE(favorite(QStringLiteral("off")).subject, QStringLiteral("Coast light"));
    }

    void refusesAnEmptyArgument()
    {
        QCOMPARE(
            CommandLine::parse({QStringLiteral("remove"), QString()}).error,
            QStringLiteral("remove: an argument is empty"));
    }

    void leavesOutWhatIsNotGiven()
    {
        const CommandLine line = CommandLine::parse({QStringLiteral("photos")});

        QCOMPARE(line.watch, false);
        QCOMPARE(line.progress, false);
        QCOMPARE(line.log, QString());
        QCOMPARE(line.folder, QDir::home().filePath(QStringLiteral("Pictures")));
    }

    void saysWhatIsWrong_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("error");
        const auto row = [](const char* text, const char* error) {
            QTest::newRow(text) << QString::fromLatin1(text).split(
                QLatin1Char(' '), Qt::SkipEmptyParts)
                                << QString::fromLatin1(error);
        };
        row("", "a command is missing; see moodsetctl --help");
        row("fotos", "no such command: fotos; see moodsetctl --help");
        row("photos extra", "photos: too many arguments");
        row("index", "index: an argument is missing");
        row("favorite 7", "favorite: an argument is missing");
        row("favorite 7 yes", "favorite: yes is neither on nor off");
        row("moodsets 7", "moodsets: too many arguments");
        row("set --watch a", "set takes no option --watch");
        row("watch --log x", "watch takes no option --log");
        row("--none", "Unknown option 'none'.");
        row("wait --log", "Missing value after '--log'.");
    }

    void saysWhatIsWrong()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, error);

        QCOMPARE(CommandLine::parse(arguments).error, error);
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)

#include "tst_commandline.moc"
