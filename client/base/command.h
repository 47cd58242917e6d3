// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "outcome.h"

#include <QtGlobal>

#include <vector>

class Invocation;

/// The kind of an argument or of an option's value. It decides how the value is checked, and how
/// shells complete it.
enum class ValueKind {
    Text,
    MoodsetName, ///< an id or a name
    Source, ///< a moodset, or a path or a URL of a moodset file or of a picture
    Picture, ///< a path or a URL
    File,
    Folder,
    Switch, ///< "on" or "off"
    Edit, ///< KEY=VALUE
    Command,
    Shell, ///< checked by the command, which takes other words, too
    Seconds, ///< 0 or more
    Color, ///< as QColor::setNamedColor() takes it
    Flag, ///< an option without a value
};

/// An argument of a command.
struct Parameter
{
    const char* name;
    ValueKind kind;
    bool isRequired = true;
    /// Whether there can be several values. Only the last argument of a command can be repeated.
    bool isRepeated = false;
};

/// An option of a command, or of all.
struct Option
{
    const char* name;
    /// The name of its value; null for a flag.
    const char* value;
    ValueKind kind;
    /// What it does, to be translated.
    const char* help;
    /// The short form; 0 if it has none.
    char letter = 0;
};

struct Example
{
    /// The command line, without the program's name.
    const char* words;
    /// What it does, to be translated.
    const char* meaning;
};

/// A command: its name, its help, and its function. The help, the man page, the completion and the
/// checks of arguments are made from this.
struct Command
{
    enum class Group { Overview, Pictures, Moodsets, Bundles, Library, Shell };

    const char* name;
    Group group;
    /// In one line without a full stop, to be translated.
    const char* summary;
    /// Whole sentences, to be translated.
    const char* description;
    std::vector<Parameter> parameters;
    std::vector<Option> options;
    std::vector<Example> examples;
    Outcome (*run)(const Invocation& invocation);
};
