// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QCommandLineParser>
#include <QDir>
#include <QString>

class Report;

/// The arguments of a benchmark: the folder where it works, options that take a number, and
/// "--no-budgets".
class Arguments
{
public:
    explicit Arguments(const QString& description);

    void addNumber(const char* name, const char* help, const char* defaultValue);
    /// Reads the arguments of this process, and ends it if they are not as they should be.
    void read();

    QDir folder() const;
    int number(const char* name) const;

    /// Prints a report; the exit status that it asks for.
    int finish(const Report& report) const;

private:
    QCommandLineParser m_parser;
};
