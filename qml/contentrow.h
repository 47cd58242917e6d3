// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QVector>

#include <content.h>

/// A row of a model: a record, and a number for the state of each of its wallpapers, because the
/// daemon replaces a wallpaper without changing its name. The number is 0 if the state is not
/// needed.
struct ContentRow
{
    Content content;
    qint64 version = 0;

    qint64 id() const { return content.data()->id; }
};
Q_DECLARE_TYPEINFO(ContentRow, Q_MOVABLE_TYPE);

using ContentRows = QVector<ContentRow>;
