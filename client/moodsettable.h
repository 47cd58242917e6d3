// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "colortext.h"

#include <QString>
#include <QVector>

#include <libraryreader.h>

/// A table of moodsets, with a line of titles, one line for each moodset, and a line with their
/// number. `activeFile` is the path of the active moodset's file. `terminalColumns` has the same
/// meaning as for textTable().
QString moodsetTable(
    const QVector<LibraryReader::Summary>& moodsets, const QString& activeFile, ColorStyle style,
    int terminalColumns = 0);
