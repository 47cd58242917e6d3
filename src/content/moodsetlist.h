// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "databasepath.h"

#include <QString>
#include <QVector>

#include <optional>

/// The data of a moodset that a list shows. Colours are texts, so a program that prints a list
/// needs neither the records nor Qt Gui, which more than double the time that it takes to start.
struct ListedMoodset
{
    qint64 id = 0;
    /// This is empty for most moodsets that were made from a picture.
    QString displayName;
    /// The path of the moodset file or the picture.
    QString path;
    bool favorite = false;
    /// As they are stored: in any form that colorFromString() takes, or any other text.
    QString primaryColor;
    QString secondaryColor;
    QString highlightColor;
    QString secondaryHighlightColor;
};

Q_DECLARE_TYPEINFO(ListedMoodset, Q_MOVABLE_TYPE);

/// All moodsets of a database, in the order of LibraryReader::moodsets(). Nothing if it cannot be
/// read.
std::optional<QVector<ListedMoodset>> readMoodsetList(
    const QString& database = DatabasePath::file());
