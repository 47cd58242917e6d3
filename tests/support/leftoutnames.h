// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDebug>
#include <QString>
#include <QTest>

/// A value as the log shows it.
template <typename T>
QString logged(const T& value)
{
    QString text;
    QDebug(&text).nospace() << value;
    return text;
}

/// The warning about a file or directory whose name the database would change.
inline QString unstorableWarning(const QString& function, const QString& path)
{
    return function + QStringLiteral(" Left out a name that the database would change: ")
        + logged(path);
}

/// The warning about a file or directory whose name is not UTF-8.
inline QString undecodableWarning(const QString& function, const QByteArray& path)
{
    return function + QStringLiteral(" Left out a name that is not UTF-8: ") + logged(path);
}

/// Adds the rows of a test: a file "name" that the database would change. It would change the first
/// one to "a.jpg".
inline void addUnstorableNames()
{
    QTest::addColumn<QString>("name");
    const QString rest = QStringLiteral("a.jpg");
    QTest::newRow("a byte order mark") << QChar(0xfeff) + rest;
    QTest::newRow("a swapped byte order mark") << QChar(0xfffe) + rest;
    QTest::newRow("a swapped byte order mark inside") << rest + QChar(0xfffe);
    QTest::newRow("the last code point of the plane") << QChar(0xffff) + rest;
}
