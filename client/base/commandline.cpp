// SPDX-License-Identifier: BSD-3-Clause
#include "commandline.h"

#include "colortext.h"
#include "printabletext.h"
#include "suggestion.h"
#include "text.h"
#include "valuecheck.h"

#include <QRegularExpression>

// Only this file includes it, because it takes long to compile.
#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include <deque>
#include <memory>
#include <string>

namespace {

/// The values that the parser found for one command.
struct Form
{
    const Command* command;
    CLI::App* app;
    std::vector<std::string> arguments;
};

std::string optionNames(const Option& option)
{
    const std::string name = std::string("--") + option.name;
    return option.letter ? std::string("-") + option.letter + "," + name : name;
}

void addOption(CLI::App* app, const Option& option)
{
    if (option.kind == ValueKind::Flag) {
        app->add_flag(optionNames(option))->disable_flag_override();
    } else {
        app->add_option(optionNames(option))->type_size(1);
    }
}

QString fromParser(const std::string& text)
{
    return QString::fromStdString(text);
}

/// What is wrong with an option that has too many values or too few. The parser's text begins with
/// the option.
QString valueFaultOf(const QString& text)
{
    QString option = text.section(QRegularExpression(QStringLiteral("[: ]")), 0, 0);
    if (!option.startsWith(QLatin1Char('-'))) {
        option.prepend(QLatin1String("--"));
    }
    return text.contains(QLatin1String("flag override"))
        ? Text::tr("the option %1 takes no value").arg(option)
        : Text::tr("the option %1 needs a value").arg(option);
}

QStringList commandNames(const std::vector<Command>& commands)
{
    QStringList names;
    for (const Command& command : commands) {
        names.append(QLatin1String(command.name));
    }
    return names;
}

QStringList optionsOf(const Command* command)
{
    QStringList names;
    const auto add = [&names](const std::vector<Option>& options) {
        for (const Option& option : options) {
            names.append(QLatin1String("--") + QLatin1String(option.name));
        }
    };
    add(CommandLine::commonOptions());
    if (command) {
        add(command->options);
    }
    return names;
}

/// The command line that shows the help of a command, or of all for null.
QString helpOf(const Command* command)
{
    return command ? QStringLiteral("moodsetctl help ") + QLatin1String(command->name)
                   : QStringLiteral("moodsetctl --help");
}

/// The error message for words that the parser could not use.
QString surplusFault(
    const Command* command, const std::vector<std::string>& words,
    const std::vector<Command>& commands)
{
    const QString word = words.empty() ? QString() : fromParser(words.front());
    if (word.startsWith(QLatin1Char('-'))) {
        const QString name = word.section(QLatin1Char('='), 0, 0);
        const QString text = command
            ? Text::tr("%1 takes no option %2").arg(QLatin1String(command->name), name)
            : Text::tr("no such option: %1").arg(name);
        return text + didYouMean(name, optionsOf(command), helpOf(command));
    }
    if (!command) {
        return Text::tr("no such command: %1").arg(word)
            + didYouMean(word, commandNames(commands), helpOf(command));
    }
    return QLatin1String(command->name) + QStringLiteral(": ")
        + Text::tr("one argument too many: %1").arg(word);
}

/// The parser for all commands, and what it has read.
class Parser
{
public:
    explicit Parser(const std::vector<Command>& commands)
        : m_commands(commands)
    {
        m_app.set_help_flag();
        m_app.require_subcommand(0, 1);
        m_app.fallthrough();
        for (const Option& option : CommandLine::commonOptions()) {
            addOption(&m_app, option);
        }
        for (const Command& command : commands) {
            CLI::App* const sub = m_app.add_subcommand(command.name);
            sub->set_help_flag();
            sub->fallthrough();
            Form& form = m_forms.emplace_back(Form{&command, sub, {}});
            if (!command.parameters.empty()) {
                sub->add_option("arguments", form.arguments)->expected(-1);
            }
            for (const Option& option : command.options) {
                addOption(sub, option);
            }
        }
    }

    /// Parses the words. Returns an error message, or an empty text.
    QString read(const QStringList& words)
    {
        // The parser takes them from the end.
        std::vector<std::string> reversed;
        for (int i = words.size() - 1; i >= 0; --i) {
            reversed.push_back(words.at(i).toStdString());
        }
        try {
            m_app.parse(reversed);
        } catch (const CLI::ExtrasError&) {
            return surplusFault(command(), m_app.remaining(true), m_commands);
        } catch (const CLI::ArgumentMismatch& error) {
            return about(valueFaultOf(fromParser(error.what())));
        } catch (const CLI::ParseError& error) {
            return about(fromParser(error.what()));
        }
        return countFault();
    }

    const Command* command() const
    {
        const Form* const form = used();
        return form ? form->command : nullptr;
    }

    bool has(const char* option) const { return m_app.count(std::string("--") + option) > 0; }

    void fill(Invocation* invocation) const
    {
        invocation->command = command();
        invocation->json = has("json");
        invocation->quiet = has("quiet");
        const Form* const form = used();
        if (!form) {
            return;
        }
        for (const std::string& value : form->arguments) {
            invocation->arguments.append(fromParser(value));
        }
        for (const Option& option : form->command->options) {
            const CLI::Option* const read = form->app->get_option(std::string("--") + option.name);
            if (read->count() > 0) {
                invocation->options.insert(
                    QLatin1String(option.name), fromParser(read->results().back()));
            }
        }
    }

private:
    const Form* used() const
    {
        for (const Form& form : m_forms) {
            if (form.app->parsed()) {
                return &form;
            }
        }
        return nullptr;
    }

    QString about(const QString& fault) const
    {
        const Form* const form = used();
        return form ? QLatin1String(form->command->name) + QStringLiteral(": ") + fault : fault;
    }

    /// The error message if the number of arguments is wrong, or an empty text.
    QString countFault() const
    {
        const Form* const form = used();
        if (!form) {
            return {};
        }
        const std::vector<Parameter>& parameters = form->command->parameters;
        const std::size_t count = form->arguments.size();
        if (count < parameters.size() && parameters.at(count).isRequired) {
            return about(Text::tr("the argument %1 is missing")
                             .arg(QLatin1String(parameters.at(count).name)));
        }
        return count > parameters.size() && !parameters.back().isRepeated
            ? about(Text::tr("one argument too many: %1")
                        .arg(fromParser(form->arguments.at(parameters.size()))))
            : QString();
    }

    const std::vector<Command>& m_commands;
    CLI::App m_app;
    std::deque<Form> m_forms;
};

/// The error message for the first value that is wrong, or an empty text.
QString checkArguments(const Invocation& invocation)
{
    const std::vector<Parameter>& parameters = invocation.command->parameters;
    for (int i = 0; i < invocation.arguments.size(); ++i) {
        const Parameter& parameter = parameters.at(std::min(std::size_t(i), parameters.size() - 1));
        QString fault = valueFault(parameter.kind, invocation.arguments.at(i));
        if (!fault.isEmpty()) {
            return fault;
        }
    }
    for (const Option& option : invocation.command->options) {
        if (invocation.has(option.name) && option.kind != ValueKind::Flag) {
            const QString fault = valueFault(option.kind, invocation.value(option.name));
            if (!fault.isEmpty()) {
                return QStringLiteral("--%1: %2").arg(QLatin1String(option.name), fault);
            }
        }
    }
    return {};
}

} // namespace

const std::vector<Option>& CommandLine::commonOptions()
{
    static const std::vector<Option> options{
        {"json", nullptr, ValueKind::Flag, QT_TRANSLATE_NOOP("Text", "print JSON, for programs")},
        {"quiet", nullptr, ValueKind::Flag, QT_TRANSLATE_NOOP("Text", "print only errors"), 'q'},
        {"help", nullptr, ValueKind::Flag, QT_TRANSLATE_NOOP("Text", "show this help"), 'h'},
        {"version", nullptr, ValueKind::Flag, QT_TRANSLATE_NOOP("Text", "show the version"), 'v'}};
    return options;
}

CommandLine CommandLine::parse(const QStringList& arguments, const std::vector<Command>& commands)
{
    CommandLine line;
    Parser parser(commands);
    line.error = parser.read(arguments);
    line.wantsHelp = parser.has("help");
    line.wantsVersion = parser.has("version");
    if (line.wantsHelp || line.wantsVersion) {
        line.error.clear();
    }
    parser.fill(&line.invocation);
    if (!line.error.isEmpty() || line.wantsHelp || line.wantsVersion) {
        return line;
    }
    if (!line.invocation.command) {
        line.error = Text::tr("a command is missing; see moodsetctl --help");
        return line;
    }
    const QString fault = checkArguments(line.invocation);
    if (!fault.isEmpty()) {
        line.error = QLatin1String(line.invocation.command->name) + QStringLiteral(": ") + fault;
    }
    return line;
}
