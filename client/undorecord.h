// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QJsonObject>
#include <QString>
#include <QVariantMap>

/// The values that the last change by this tool has replaced, in a file of the user's state
/// directory.
struct UndoRecord
{
    enum class Kind { None, Set, Edit };

    Kind kind = Kind::None;
    /// Set: the path that was active before. Edit: the path of the moodset's file.
    QString file;
    /// Edit: the former values of the attributes.
    QVariantMap attributes;

    /// The stored record. Its kind is None if there is none or it cannot be read.
    static UndoRecord read();
    /// Stores the record in place of the last one. Returns the reason of a failure, or an empty
    /// text.
    QString write() const;

    static QString path();
};
