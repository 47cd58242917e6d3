// SPDX-License-Identifier: BSD-3-Clause
#include "arguments.h"

#include "report.h"

#include <QCoreApplication>

#include <cstdlib>
#include <iostream>

namespace {

const QString NoBudgets = QStringLiteral("no-budgets");

} // namespace

Arguments::Arguments(const QString& description, Folder folder)
    : m_positionalArguments(folder == TakesFolder ? 1 : 0)
{
    m_parser.setApplicationDescription(description);
    m_parser.addHelpOption();
    if (folder == TakesFolder) {
        m_parser.addPositionalArgument(
            QStringLiteral("FOLDER"), QStringLiteral("Holds all files: an empty one on the disk."));
    }
    m_parser.addOption({NoBudgets, QStringLiteral("Succeed also where a budget is not kept.")});
}

void Arguments::addRounds(const char* defaultValue)
{
    addNumber("rounds", "Rounds of which medians are taken.", defaultValue);
}

void Arguments::addNumber(const char* name, const char* help, const char* defaultValue)
{
    m_parser.addOption(
        {QLatin1String(name), QLatin1String(help), QStringLiteral("N"),
         QLatin1String(defaultValue)});
}

void Arguments::addFile(const char* name, const char* help)
{
    m_parser.addOption({QLatin1String(name), QLatin1String(help), QStringLiteral("FILE")});
}

void Arguments::read()
{
    m_parser.process(*QCoreApplication::instance());
    if (m_parser.positionalArguments().size() != m_positionalArguments) {
        m_parser.showHelp(EXIT_FAILURE);
    }
}

QDir Arguments::folder() const
{
    return QDir(m_parser.positionalArguments().constFirst());
}

int Arguments::number(const char* name) const
{
    return m_parser.value(QLatin1String(name)).toInt();
}

QString Arguments::file(const char* name) const
{
    return m_parser.value(QLatin1String(name));
}

int Arguments::finish(const Report& report) const
{
    report.print(std::cout);
    return report.isWithinBudgets() || m_parser.isSet(NoBudgets) ? EXIT_SUCCESS : EXIT_FAILURE;
}
