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
        {QStringLiteral("index"), Command::Index, {}, 1},
        {QStringLiteral("moodsets"), Command::Moodsets, {}, 0},
        {QStringLiteral("set"), Command::Set, {}, 1},
        {QStringLiteral("create"), Command::Create, {}, 1},
        {QStringLiteral("favorite"), Command::Favorite, {}, 2},
        {QStringLiteral("remove"), Command::Remove, {}, 1},
        {QStringLiteral("install"), Command::Install, {}, 1},
        {QStringLiteral("refresh"), Command::Refresh, {}, 0}};
}

QString switchedOn()
{
    return QStringLiteral("on");
}

QString switchedOff()
{
    return QStringLiteral("off");
}

QString checkForm(const Form& form, const QStringList& options, const QStringList& arguments)
{
    for (const QString& option : options) {
        if (!form.options.contains(option)) {
            return QStringLiteral("%1 takes no option --%2").arg(form.name, option);
        }
    }
    if (arguments.count() > form.arguments) {
        return QStringLiteral("%1: too many arguments").arg(form.name);
    }
    if (arguments.count() < form.arguments) {
        return QStringLiteral("%1: an argument is missing").arg(form.name);
    }
    if (arguments.contains(QString())) {
        return QStringLiteral("%1: an argument is empty").arg(form.name);
    }
    if (form.command == CommandLine::Command::Favorite && arguments.at(1) != switchedOn()
        && arguments.at(1) != switchedOff()) {
        return QStringLiteral("%1: %2 is neither on nor off").arg(form.name, arguments.at(1));
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
    line.error = checkForm(*form, parser.optionNames(), words);
    line.command = form->command;
    line.watch = parser.isSet(QStringLiteral("watch"));
    line.progress = parser.isSet(QStringLiteral("progress"));
    line.log = parser.value(QStringLiteral("log"));
    line.folder = parser.isSet(QStringLiteral("folder"))
        ? QDir(parser.value(QStringLiteral("folder"))).absolutePath()
        : picturesFolder();
    line.subject = words.value(0);
    line.favorite = words.value(1) == switchedOn();
    return line;
}

QString CommandLine::helpText()
{
    return QStringLiteral(
        R"(Usage: moodsetctl COMMAND
Shows what the library of moodsetd holds, its pictures and moodsets, and has it do things.

Pictures:
  photos [--folder DIR] [--watch]   show a table of all pictures; with --watch, then what changes
  watch [--folder DIR]              show pictures as they are added, changed and removed
  wait [--progress] [--log FILE]    wait until the daemon has indexed all it knows of
  index PICTURE                     have a picture taken in

Moodsets:
  moodsets                          show a table of all moodsets
  set PICTURE or MOODSET            make a moodset active; of a picture, one is made first
  create PICTURE                    make a moodset of a picture, and leave the active one
  favorite MOODSET on|off           make a moodset a favourite, or no longer one
  remove MOODSET                    remove a moodset from the library, but not its file
  install FOLDER                    have the bundle in a folder taken in
  refresh                           have the folders of installed bundles looked through

A PICTURE is a path or a URL, for set and create also one of the network. A MOODSET is the id or the
name that the table shows, for set also the path or the URL of its file.

Options:
  --folder DIR   show paths relative to DIR; if not given, to the user's pictures folder
  --progress     show how far the daemon is
  --log FILE     read the daemon's log from FILE, and know exactly when it is idle
  -h, --help     show this text
  -v, --version  show the version

The exit status is 0, or 1 if something went wrong; then one line on the standard error says what.
)");
}
