// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

/// Lines of cells, each column as wide as its widest cell. The last column is not filled up, and so
/// may hold what a terminal obeys; all others must be printable.
QString textTable(const QVector<QStringList>& lines);

/// path for people to read: relative to the absolute path folder if it lies in there, printable,
/// and no wider than 60 columns, with the end kept. An empty folder stands for none.
QString displayPath(const QString& path, const QString& folder);

/// number and the noun for it.
QString numbered(int number, const char* singular, const char* plural);
