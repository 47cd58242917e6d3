// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QVector>

#include <moodsetdata.h>

/// How colours are shown.
enum class ColorStyle {
    Text, ///< as "#aarrggbb"
    Swatches ///< as fields of a terminal's lines, without their transparency
};

/// A table of moodsets, one to a line, below a line of titles, and then a line with their number.
/// activeFile is the path of the active moodset's file.
QString moodsetTable(const QVector<Moodset>& moodsets, const QString& activeFile, ColorStyle style);
