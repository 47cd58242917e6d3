// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "colortext.h"
#include "content/moodsetlist.h"

#include <QString>
#include <QVector>

/// The name to show for a moodset; see subject.h.
QString calledName(const ListedMoodset& moodset);

/// A table of moodsets, with a line of titles, one line for each moodset, and a line with their
/// number. `activeFile` is the path of the active moodset's file. `terminalColumns` has the same
/// meaning as for textTable(). All colours must be as isColorText() tells.
QString moodsetTable(
    const QVector<ListedMoodset>& moodsets, const QString& activeFile, ColorStyle style,
    int terminalColumns = 0);
