// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// How to shorten a cell that is too wide for the terminal.
enum class Fit {
    Whole, ///< It stays as it is.
    KeepStart, ///< Its end is cut off.
    KeepEnd ///< Its start is cut off.
};

/// Lines of cells, each column as wide as its widest cell. The last column is not filled up. Cells
/// must be printable, except for colours (see displayColor()).
///
/// If the number of the terminal's columns is given, the widest columns are cut until the lines
/// fit, or until nothing more can be cut. `fits` says which columns may be cut.
QString textTable(
    const QVector<QStringList>& lines, const QVector<Fit>& fits = {}, int terminalColumns = 0);

/// `path` for people to read: printable, and relative to the absolute path `folder` if it is
/// inside. An empty `folder` means none.
QString displayPath(const QString& path, const QString& folder);
