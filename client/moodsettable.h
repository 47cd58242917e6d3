// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "colortext.h"

#include <QString>
#include <QVector>

#include <libraryreader.h>

/// A table of moodsets, one to a line, below a line of titles, and then a line with their number.
/// activeFile is the path of the active moodset's file.
/// terminalColumns is as for textTable().
QString moodsetTable(
    const QVector<LibraryReader::Summary>& moodsets, const QString& activeFile, ColorStyle style,
    int terminalColumns = 0);
