// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QDir>
#include <QStandardPaths>
#include <QString>
#include <QStringList>

/// Where the content database is. QueryAgentDatabase offers the same to clients.
namespace DatabasePath {

/// The directory of the file, with a "/" at its end.
inline QString directory()
{
    const QStringList pieces{
        QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
        QStringLiteral("system/privileged"), QStringLiteral("Moodsetd"), QString()};
    return pieces.join(QDir::separator());
}

/// The name of the file in its directory.
inline QString fileName()
{
    return QStringLiteral("moodsetd.sqlite");
}

/// The path of the file.
inline QString file()
{
    return directory() + fileName();
}

} // namespace DatabasePath
