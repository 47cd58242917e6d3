// SPDX-License-Identifier: BSD-3-Clause
#include "commandline.h"
#include "commands/allcommands.h"

#include <QTest>

class CommandLineTest : public QObject
{
    Q_OBJECT

private:
    static CommandLine parse(const char* words)
    {
        return CommandLine::parse(
            QString::fromUtf8(words).split(QLatin1Char(' '), Qt::SkipEmptyParts), allCommands());
    }

private Q_SLOTS:
    void namesTheCommandAndItsArguments_data()
    {
        QTest::addColumn<QByteArray>("words");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QStringList>("arguments");
        const auto row = [](const char* words, const char* name, const QStringList& arguments) {
            QTest::newRow(words) << QByteArray(words) << QByteArray(name) << arguments;
        };
        row("theme", "theme", {});
        row("set a.jpg", "set", {QStringLiteral("a.jpg")});
        // A moodset can have the name of a command.
        row("show set", "show", {QStringLiteral("set")});
        row("help set", "help", {QStringLiteral("set")});
        row("show -- --json", "show", {QStringLiteral("--json")});
        row("favorite Sea on", "favorite", {QStringLiteral("Sea"), QStringLiteral("on")});
        row("edit 1 name=a=b volume=3", "edit",
            {QStringLiteral("1"), QStringLiteral("name=a=b"), QStringLiteral("volume=3")});
        row("preview", "preview", {});
        row("completion --words -- set", "completion", {QStringLiteral("set")});
    }

    void namesTheCommandAndItsArguments()
    {
        QFETCH(QByteArray, words);
        QFETCH(QByteArray, name);
        QFETCH(QStringList, arguments);

        const CommandLine line = parse(words.constData());

        QCOMPARE(line.error, QString());
        QCOMPARE(QByteArray(line.invocation.command->name), name);
        QCOMPARE(line.invocation.arguments, arguments);
    }

    void optionsStandAnywhere_data()
    {
        QTest::addColumn<QByteArray>("words");
        for (const char* const words :
             {"--json -q set --timeout 2.5 --no-wait a.jpg",
              "set a.jpg -q --timeout=2.5 --json --no-wait",
              "-q set --no-wait --json --timeout 2.5 -- a.jpg"}) {
            QTest::newRow(words) << QByteArray(words);
        }
    }

    void optionsStandAnywhere()
    {
        QFETCH(QByteArray, words);

        const Invocation invocation = parse(words.constData()).invocation;

        QVERIFY(invocation.json);
        QVERIFY(invocation.quiet);
        QVERIFY(invocation.has("no-wait"));
        QCOMPARE(invocation.timeoutMs(1), 2500);
        QCOMPARE(invocation.arguments, QStringList(QStringLiteral("a.jpg")));
    }

    void withoutATimeoutTheStandardOneCounts()
    {
        QCOMPARE(parse("set a.jpg").invocation.timeoutMs(700), 700);
    }

    void helpAndVersionGoBeforeAllElse()
    {
        QVERIFY(parse("--help").wantsHelp);
        QVERIFY(parse("-h set").wantsHelp);
        QVERIFY(parse("set --help").wantsHelp);
        QCOMPARE(parse("set --help").invocation.command->name, "set");
        QCOMPARE(parse("set --help").error, QString());
        QVERIFY(parse("--version").wantsVersion);
        QVERIFY(parse("-v").wantsVersion);
    }

    void saysWhatIsWrong_data()
    {
        QTest::addColumn<QByteArray>("words");
        QTest::addColumn<QString>("error");
        const auto row = [](const char* words, const char* error) {
            QTest::newRow(words) << QByteArray(words) << QString::fromUtf8(error);
        };
        row("", "a command is missing; see moodsetctl --help");
        row("nonsense", "no such command: nonsense; see moodsetctl --help");
        row("moodset", "no such command: moodset; did you mean \"moodsets\"?");
        row("photo", "no such command: photo; did you mean \"photos\"?");
        row("--nonsense", "no such option: --nonsense; see moodsetctl --help");
        row("theme --jsno", "theme takes no option --jsno; did you mean \"--json\"?");
        row("theme --folder x", "theme takes no option --folder; see moodsetctl help theme");
        row("theme x", "theme: one argument too many: x");
        row("set", "set: the argument SOURCE is missing");
        row("set a b", "set: one argument too many: b");
        row("favorite a", "favorite: the argument on|off is missing");
        row("favorite a maybe", "favorite: maybe is neither on nor off");
        row("edit a", "edit: the argument KEY=VALUE is missing");
        row("edit a name", "edit: name is not of the form KEY=VALUE");
        row("wait --timeout soon", "wait: --timeout: soon is no number of seconds, 0 or more");
        row("wait --timeout=-1", "wait: --timeout: -1 is no number of seconds, 0 or more");
        row("preview --highlight no",
            "preview: --highlight: no is no colour: write #rrggbb, #aarrggbb or an SVG name");
    }

    void saysWhatIsWrong()
    {
        QFETCH(QByteArray, words);
        QFETCH(QString, error);

        QCOMPARE(parse(words.constData()).error, error);
    }

    void anEmptyArgumentIsRefused()
    {
        const CommandLine line =
            CommandLine::parse({QStringLiteral("set"), QString()}, allCommands());

        QCOMPARE(line.error, QStringLiteral("set: an argument is empty"));
    }

    void jsonIsKnownAlsoIfTheRestIsWrong()
    {
        QVERIFY(parse("--json set").invocation.json);
        QVERIFY(parse("--json wait --timeout soon").invocation.json);
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)

#include "tst_commandline.moc"
