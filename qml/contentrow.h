// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QVector>

#include <content.h>

/// A row of a model: a record, and what tells one state of its wallpapers from another, which keep
/// their names when they are written again. 0 where that is not looked at.
struct ContentRow
{
    Content content;
    qint64 version = 0;

    qint64 id() const { return content.data()->id; }
};
Q_DECLARE_TYPEINFO(ContentRow, Q_MOVABLE_TYPE);

using ContentRows = QVector<ContentRow>;
