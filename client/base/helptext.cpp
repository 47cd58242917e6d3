// SPDX-License-Identifier: BSD-3-Clause
#include "helptext.h"

#include "commandline.h"
#include "text.h"
#include "texttable.h"

#include <QStringList>

#include <array>

namespace {

constexpr int HelpColumns = 80;

constexpr std::array<Command::Group, 6> Groups{Command::Group::Overview, Command::Group::Moodsets,
                                               Command::Group::Pictures, Command::Group::Bundles,
                                               Command::Group::Library,  Command::Group::Shell};

QString optionForm(const Option& option)
{
    QString form = QStringLiteral("--") + QLatin1String(option.name);
    if (option.letter) {
        form = QStringLiteral("-%1, %2").arg(QLatin1Char(option.letter)).arg(form);
    }
    return option.value ? form + QLatin1Char(' ') + QLatin1String(option.value) : form;
}

/// The text in lines of the terminal's width, each indented.
QString wrapped(const QString& text, int indent)
{
    QString result;
    for (const QString& paragraph : text.split(QLatin1Char('\n'))) {
        QString line;
        for (const QString& word : paragraph.split(QLatin1Char(' '))) {
            if (!line.isEmpty() && indent + line.size() + 1 + word.size() > HelpColumns) {
                result += QString(indent, QLatin1Char(' ')) + line + QLatin1Char('\n');
                line.clear();
            }
            line += (line.isEmpty() ? QString() : QStringLiteral(" ")) + word;
        }
        result += QString(indent, QLatin1Char(' ')) + line + QLatin1Char('\n');
    }
    return result;
}

/// Names and their explanations, in two aligned columns.
QString explained(const QVector<QStringList>& lines)
{
    int widest = 0;
    for (const QStringList& line : lines) {
        widest = std::max(widest, int(line.at(0).size()));
    }
    QString result;
    for (const QStringList& line : lines) {
        QString text = wrapped(line.at(1), widest + 4);
        text.replace(0, widest + 4, QStringLiteral("  ") + line.at(0).leftJustified(widest + 2));
        result += text;
    }
    return result;
}

QString explained(const std::vector<Option>& options)
{
    QVector<QStringList> lines;
    for (const Option& option : options) {
        lines.append({optionForm(option), Text::tr(option.help)});
    }
    return explained(lines);
}

QString title(const QString& text)
{
    return QLatin1Char('\n') + text + QStringLiteral(":\n");
}

QString roff(QString text)
{
    return text.replace(QLatin1Char('\\'), QStringLiteral("\\e"))
        .replace(QLatin1Char('-'), QStringLiteral("\\-"));
}

/// Lines of text, escaped so that roff does not read them as its own requests.
QString roffText(const QString& text)
{
    QString result;
    for (QString line : wrapped(text, 0).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        if (line.startsWith(QLatin1Char('.')) || line.startsWith(QLatin1Char('\''))) {
            line.prepend(QStringLiteral("\\&"));
        }
        result += roff(line) + QLatin1Char('\n');
    }
    return result;
}

QString roffOptions(const std::vector<Option>& options)
{
    QString result;
    for (const Option& option : options) {
        result += QStringLiteral(".TP\n.B %1\n%2")
                      .arg(roff(optionForm(option)), roffText(Text::tr(option.help)));
    }
    return result;
}

QString roffCommand(const Command& command)
{
    QString result = QStringLiteral(".TP\n.B %1\n").arg(roff(synopsis(command)))
        + roffText(Text::tr(command.description));
    if (!command.options.empty()) {
        result += QStringLiteral(".RS\n") + roffOptions(command.options) + QStringLiteral(".RE\n");
    }
    return result;
}

QString roffExamples(const std::vector<Command>& commands)
{
    QString result;
    for (const Command& command : commands) {
        for (const Example& example : command.examples) {
            result += QStringLiteral(".TP\n.B moodsetctl %1\n%2")
                          .arg(
                              roff(QLatin1String(example.words)),
                              roffText(Text::tr(example.meaning) + QLatin1Char('.')));
        }
    }
    return result;
}

/// The explanation of the names of arguments, for the help and the man page.
QString notions()
{
    return Text::tr("A PICTURE is a path or a URL; set, create and preview also take an "
                    "address on the network. A MOODSET is an id or a name from the table of "
                    "moodsets. If a command takes both and a name is also the name of a "
                    "file, it means the file.");
}

QString exitStatuses()
{
    return Text::tr("0: the command succeeded; 1: it failed; 2: the arguments are wrong; 3: "
                    "the daemon does not run and cannot be started; 4: the time limit has "
                    "passed. If the status is not 0, one line on the standard error gives "
                    "the reason.");
}

} // namespace

QString synopsis(const Command& command)
{
    QString text = QLatin1String(command.name);
    for (const Parameter& parameter : command.parameters) {
        QString name = QLatin1String(parameter.name);
        if (parameter.isRepeated) {
            name += QStringLiteral("...");
        }
        text += QLatin1Char(' ')
            + (parameter.isRequired ? name : QLatin1Char('[') + name + QLatin1Char(']'));
    }
    for (const Option& option : command.options) {
        text += QStringLiteral(" [--") + QLatin1String(option.name)
            + (option.value ? QLatin1Char(' ') + QLatin1String(option.value) : QString())
            + QLatin1Char(']');
    }
    return text;
}

QString groupTitle(Command::Group group)
{
    switch (group) {
    case Command::Group::Overview:
        return Text::tr("Overview");
    case Command::Group::Pictures:
        return Text::tr("Pictures");
    case Command::Group::Moodsets:
        return Text::tr("Moodsets");
    case Command::Group::Bundles:
        return Text::tr("Bundles");
    case Command::Group::Library:
        return Text::tr("The library and the daemon");
    case Command::Group::Shell:
        return Text::tr("Help and the shell");
    }
    return {};
}

QString overviewHelp(const std::vector<Command>& commands)
{
    QString help = Text::tr("Usage: moodsetctl COMMAND") + QLatin1Char('\n')
        + wrapped(Text::tr(
                      "Shows the pictures, the moodsets and the theme that moodsetd keeps, and "
                      "changes them."),
                  0);
    for (const Command::Group group : Groups) {
        help += title(groupTitle(group));
        QVector<QStringList> lines;
        for (const Command& command : commands) {
            if (command.group == group) {
                lines.append({QLatin1String(command.name), Text::tr(command.summary)});
            }
        }
        help += explained(lines);
    }
    help += title(Text::tr("Options of all commands")) + explained(CommandLine::commonOptions())
        + QLatin1Char('\n') + wrapped(notions(), 0) + QLatin1Char('\n')
        + title(Text::tr("To begin with")).mid(1)
        + QStringLiteral("  moodsetctl moodsets\n"
                         "  moodsetctl preview MOODSET -o preview.png\n"
                         "  moodsetctl set MOODSET\n"
                         "  moodsetctl edit MOODSET highlight=tomato\n"
                         "  moodsetctl undo\n"
                         "  moodsetctl doctor\n\n")
        + wrapped(Text::tr("moodsetctl help COMMAND describes each of them."), 0)
        + title(Text::tr("Exit status")) + wrapped(exitStatuses(), 2);
    return help;
}

QString commandHelp(const Command& command)
{
    QString help = Text::tr("Usage: moodsetctl %1").arg(synopsis(command)) + QStringLiteral("\n\n")
        + wrapped(Text::tr(command.description), 0);
    help += title(Text::tr("Options")) + explained(command.options)
        + explained(CommandLine::commonOptions());
    if (!command.examples.empty()) {
        help += title(Text::tr("Examples"));
        for (const Example& example : command.examples) {
            help += QStringLiteral("  moodsetctl ") + QLatin1String(example.words)
                + QLatin1Char('\n') + wrapped(Text::tr(example.meaning), 6);
        }
    }
    return help;
}

QString manPage(const std::vector<Command>& commands)
{
    QString page = QStringLiteral(
        ".\\\" SPDX-License-Identifier: BSD-3-Clause\n"
        ".\\\" Made by \"moodsetctl help --man\".\n"
        ".TH MOODSETCTL 1 2026-11-22 \"moodsetd\" \"User commands\"\n"
        ".SH NAME\n"
        "moodsetctl \\- show the pictures, moodsets and theme of moodsetd, and change them\n"
        ".SH SYNOPSIS\n"
        ".B moodsetctl\n"
        ".I COMMAND\n"
        ".RI [ ARGUMENT \" ...]\"\n"
        ".SH DESCRIPTION\n"
        ".B moodsetctl\n"
        "reads the database that\n"
        ".BR moodsetd (8)\n"
        "keeps, and asks the daemon over the session bus for changes. It never writes the "
        "database.\n"
        "The daemon is started if it does not run. Its replies do not tell how a call went, so\n"
        "each command compares the state after the call with the request, and fails if they "
        "differ.\n"
        ".PP\n");
    page += roffText(notions());
    for (const Command::Group group : Groups) {
        page += QStringLiteral(".SH %1\n").arg(roff(groupTitle(group)).toUpper());
        for (const Command& command : commands) {
            if (command.group == group) {
                page += roffCommand(command);
            }
        }
    }
    page +=
        QStringLiteral(".SH OPTIONS OF ALL COMMANDS\n") + roffOptions(CommandLine::commonOptions())
        + QStringLiteral(
            ".SH COLUMNS OF PICTURES\n"
            ".TP\n.B Size\n"
            "Width and height in pixels, as stored, before any rotation;\n"
            ".B waiting\nfor a picture that has not been read yet,\n"
            ".B unreadable\nfor a file that is damaged, and\n"
            ".B unknown\nfor a format of which only the tags can be read.\n"
            ".TP\n.B Taken\nWhen the picture was taken, in local time.\n"
            ".TP\n.B Orientation\n"
            "The value of the Exif tag: 1 upright, 3 upside down, 6 to be turned right, 8 to be\n"
            "turned left; 2, 4, 5 and 7 are also mirrored.\n"
            ".PP\nA minus sign means that the file does not have the value, or that the key is not "
            "set.\n"
            "Control characters in names are shown as escapes. Tables fit the terminal; elsewhere\n"
            "nothing is cut off.\n"
            ".SH EXAMPLES\n")
        + roffExamples(commands) + QStringLiteral(".SH EXIT STATUS\n") + roffText(exitStatuses())
        + QStringLiteral(
            ".SH ENVIRONMENT\n"
            ".TP\n.B NO_COLOR\n"
            "If this is set and not empty, colours are shown as text on a terminal, too.\n"
            ".TP\n.BR LC_ALL \", \" LC_MESSAGES \", \" LANG\n"
            "The language of the output, and the form of dates. English, German and Finnish are\n"
            "built in. JSON does not depend on them.\n"
            ".TP\n.B XDG_STATE_HOME\n"
            "The folder in which\n.I moodsetctl/undo.json\n"
            "keeps the values that the last change has replaced;\n.I ~/.local/state\nif not set.\n"
            ".SH FILES\n"
            ".TP\n.I /usr/share/moodsetd/schema/moodsetctl.schema.json\n"
            "describes what\n.B \\-\\-json\nprints.\n"
            ".SH SEE ALSO\n"
            ".BR moodsetd (8)\n");
    return page;
}
