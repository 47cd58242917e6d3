// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// The warning about a moodset file, an index file or a catalogue that is too large.
inline QString tooLargeWarning(const QString& path)
{
    return QStringLiteral("static PackagedFile PackagedFile::read(const QString&) "
                          "File larger than 16 MiB \"%1\"")
        .arg(path);
}
