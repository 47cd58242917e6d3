// SPDX-License-Identifier: BSD-3-Clause
#include "commandline.h"

#include <QCommandLineParser>
#include <QDir>
#include <QStandardPaths>
#include <QVector>

#include <algorithm>

namespace {

struct Form
{
    QString name;
    CommandLine::Command command;
    QStringList options;
    int arguments;
};

QVector<Form> forms()
{
    using Command = CommandLine::Command;
    return {
        {QStringLiteral("photos"),
         Command::Photos,
         {QStringLiteral("folder"), QStringLiteral("watch")},
         0},
        {QStringLiteral("watch"), Command::Watch, {QStringLiteral("folder")}, 0},
        {QStringLiteral("wait"),
         Command::Wait,
         {QStringLiteral("log"), QStringLiteral("progress")},
         0},
        {QStringLiteral("index"), Command::Index, {}, 1}};
}

QString checkForm(const Form& form, const QStringList& options, int arguments)
{
    for (const QString& option : options) {
        if (!form.options.contains(option)) {
            return QStringLiteral("%1 takes no option --%2").arg(form.name, option);
        }
    }
    if (arguments > form.arguments) {
        return QStringLiteral("%1: too many arguments").arg(form.name);
    }
    if (arguments < form.arguments) {
        return QStringLiteral("%1: an argument is missing").arg(form.name);
    }
    return {};
}

QString picturesFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
}

} // namespace

CommandLine CommandLine::parse(const QStringList& arguments)
{
    CommandLine line;
    QCommandLineParser parser;
    const QString value = QStringLiteral("value");
    parser.addOption({QStringLiteral("folder"), QString(), value});
    parser.addOption({QStringLiteral("log"), QString(), value});
    parser.addOption(QCommandLineOption(QStringLiteral("watch")));
    parser.addOption(QCommandLineOption(QStringLiteral("progress")));
    parser.addHelpOption();
    parser.addVersionOption();
    if (!parser.parse(QStringList(QStringLiteral("moodsetctl")) + arguments)) {
        line.error = parser.errorText();
        return line;
    }
    if (parser.isSet(QStringLiteral("help"))) {
        return line;
    }
    if (parser.isSet(QStringLiteral("version"))) {
        line.command = Command::Version;
        return line;
    }

    QStringList words = parser.positionalArguments();
    if (words.isEmpty()) {
        line.error = QStringLiteral("a command is missing; see moodsetctl --help");
        return line;
    }
    const QString name = words.takeFirst();
    const QVector<Form> known = forms();
    const auto form = std::find_if(
        known.cbegin(), known.cend(), [&name](const Form& entry) { return entry.name == name; });
    if (form == known.cend()) {
        line.error = QStringLiteral("no such command: %1; see moodsetctl --help").arg(name);
        return line;
    }
    line.error = checkForm(*form, parser.optionNames(), words.count());
    line.command = form->command;
    line.watch = parser.isSet(QStringLiteral("watch"));
    line.progress = parser.isSet(QStringLiteral("progress"));
    line.log = parser.value(QStringLiteral("log"));
    line.folder = parser.isSet(QStringLiteral("folder"))
        ? QDir(parser.value(QStringLiteral("folder"))).absolutePath()
        : picturesFolder();
    line.picture = words.value(0);
    return line;
}

QString CommandLine::helpText()
{
    return QStringLiteral(
        R"(Usage: moodsetctl COMMAND
Shows what the picture library of moodsetd holds, and asks it to take in pictures.

Commands:
  photos [--folder DIR] [--watch]   show a table of all pictures; with --watch, then what changes
  watch [--folder DIR]              show pictures as they are added, changed and removed
  wait [--progress] [--log FILE]    wait until the daemon has indexed all it knows of
  index PICTURE                     have a picture, a path or a file URL, taken in

Options:
  --folder DIR   show paths relative to DIR; if not given, to the user's pictures folder
  --progress     show how far the daemon is
  --log FILE     read the daemon's log from FILE, and know exactly when it is idle
  -h, --help     show this text
  -v, --version  show the version

The exit status is 0, or 1 if something went wrong; then one line on the standard error says what.
)");
}
