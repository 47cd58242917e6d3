// SPDX-License-Identifier: BSD-3-Clause
#include "candidates.h"

#include "commandline.h"
#include "moodsetedit.h"
#include "moodsetlibrary.h"
#include "subject.h"
#include "text.h"

#include <algorithm>

namespace {

/// Collects the candidates that begin with the word that is being typed.
class Collection
{
public:
    Collection(QString typed, Candidates* candidates)
        : m_typed(std::move(typed))
        , m_candidates(candidates)
    {
    }

    void add(const QString& word, const QString& meaning = {})
    {
        if (word.startsWith(m_typed)) {
            m_candidates->words.append({word, meaning});
        }
    }

    void addOptions(const std::vector<Option>& options)
    {
        for (const Option& option : options) {
            add(QLatin1String("--") + QLatin1String(option.name), Text::tr(option.help));
        }
    }

    void addCommands(const std::vector<Command>& commands)
    {
        for (const Command& command : commands) {
            add(QLatin1String(command.name), Text::tr(command.summary));
        }
    }

    void addMoodsets()
    {
        for (const Moodset& moodset : MoodsetLibrary().moodsets()) {
            const QString name = calledName(*moodset);
            // A name with a line break cannot be typed; its id can.
            const bool isTyped = !name.isEmpty()
                && std::all_of(name.cbegin(), name.cend(), [](QChar c) { return c.isPrint(); });
            add(isTyped ? name : QString::number(moodset->id), moodset->url.toLocalFile());
        }
    }

    void addKind(ValueKind kind, const std::vector<Command>& commands)
    {
        switch (kind) {
        case ValueKind::MoodsetName:
            addMoodsets();
            break;
        case ValueKind::Source:
            addMoodsets();
            m_candidates->files = true;
            break;
        case ValueKind::Picture:
        case ValueKind::File:
            m_candidates->files = true;
            break;
        case ValueKind::Folder:
            m_candidates->folders = true;
            break;
        case ValueKind::Switch:
            add(QStringLiteral("on"));
            add(QStringLiteral("off"));
            break;
        case ValueKind::Edit:
            for (const QString& key : MoodsetEdit::keys()) {
                add(key + QLatin1Char('='));
            }
            break;
        case ValueKind::Command:
            addCommands(commands);
            break;
        case ValueKind::Shell:
            add(QStringLiteral("bash"));
            add(QStringLiteral("zsh"));
            add(QStringLiteral("fish"));
            break;
        default:
            break;
        }
    }

private:
    QString m_typed;
    Candidates* m_candidates;
};

const Option* optionNamed(const std::vector<Option>& options, const QString& word)
{
    for (const Option& option : options) {
        const bool isShort = option.letter && word.size() == 2 && word.at(0) == QLatin1Char('-')
            && word.at(1) == QLatin1Char(option.letter);
        if (isShort || word == QLatin1String("--") + QLatin1String(option.name)) {
            return &option;
        }
    }
    return nullptr;
}

/// Adds the candidates for the next word of a command.
void addNext(
    const std::vector<Command>& commands, const Command& command, const QStringList& words,
    Collection* collection)
{
    int arguments = 0;
    for (int i = 0; i < words.size(); ++i) {
        const Option* const option = optionNamed(command.options, words.at(i));
        if (option && option->value) {
            if (i + 1 == words.size()) {
                collection->addKind(option->kind, commands);
                return;
            }
            ++i;
        } else if (!words.at(i).startsWith(QLatin1Char('-'))) {
            ++arguments;
        }
    }
    if (command.parameters.empty()) {
        return;
    }
    const Parameter& last = command.parameters.back();
    if (arguments < int(command.parameters.size())) {
        collection->addKind(command.parameters.at(std::size_t(arguments)).kind, commands);
    } else if (last.isRepeated) {
        collection->addKind(last.kind, commands);
    }
}

} // namespace

Candidates Candidates::find(const std::vector<Command>& commands, const QStringList& words)
{
    Candidates candidates;
    QStringList before = words;
    const QString typed = before.isEmpty() ? QString() : before.takeLast();
    Collection collection(typed, &candidates);
    const auto isWord = [](const QString& word) { return !word.startsWith(QLatin1Char('-')); };
    const auto name = std::find_if(before.cbegin(), before.cend(), isWord);
    const auto command = name == before.cend()
        ? commands.cend()
        : std::find_if(commands.cbegin(), commands.cend(), [&](const Command& known) {
              return QLatin1String(known.name) == *name;
          });
    if (typed.startsWith(QLatin1Char('-'))) {
        collection.addOptions(CommandLine::commonOptions());
        if (command != commands.cend()) {
            collection.addOptions(command->options);
        }
    } else if (name == before.cend()) {
        collection.addCommands(commands);
    } else if (command != commands.cend()) {
        const int index = int(name - before.cbegin());
        addNext(commands, *command, before.mid(index + 1), &collection);
    }
    return candidates;
}

QString Candidates::text() const
{
    QString text = folders ? QStringLiteral("folders\n")
        : files            ? QStringLiteral("files\n")
                           : QStringLiteral("words\n");
    for (const auto& [word, meaning] : words) {
        text += word;
        if (!meaning.isEmpty()) {
            text += QLatin1Char('\t') + meaning;
        }
        text += QLatin1Char('\n');
    }
    return text;
}
