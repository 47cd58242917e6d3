// SPDX-License-Identifier: BSD-3-Clause
#include "neededprograms.h"

#include <QStandardPaths>
#include <QTest>

#include <algorithm>
#include <iterator>

QStringList missingPrograms(const QStringList& programs)
{
    QStringList missing;
    std::copy_if(
        programs.cbegin(), programs.cend(), std::back_inserter(missing),
        [](const QString& program) { return QStandardPaths::findExecutable(program).isEmpty(); });
    return missing;
}

bool skipsWithout(const QStringList& programs)
{
    const QStringList missing = missingPrograms(programs);
    if (missing.isEmpty()) {
        return false;
    }
    QTest::qSkip(
        qPrintable(QStringLiteral("Not installed: ") + missing.join(QLatin1Char(' '))), __FILE__,
        __LINE__);
    return true;
}
