// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QCommandLineParser>
#include <QDir>
#include <QString>

class Report;

/// The arguments of a benchmark: the folder where it works, if it takes one, options that take a
/// number, and "--no-budgets".
class Arguments
{
public:
    enum Folder { NoFolder, TakesFolder };

    explicit Arguments(const QString& description, Folder folder = TakesFolder);

    /// Adds the option "--rounds".
    void addRounds(const char* defaultValue);
    void addNumber(const char* name, const char* help, const char* defaultValue);
    void addFile(const char* name, const char* help);
    /// Reads the arguments of this process. Ends the process if they are wrong.
    void read();

    QDir folder() const;
    int number(const char* name) const;
    /// The path that was given, or an empty one.
    QString file(const char* name) const;

    /// Prints a report. Returns the exit status that follows from it.
    int finish(const Report& report) const;

private:
    QCommandLineParser m_parser;
    const int m_positionalArguments;
};
