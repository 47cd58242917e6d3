// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

class MoodsetService;

/// Makes the daemon list favourites in the order of `files`.
///
/// The daemon sorts favourites by the second in which they became favourites, and a client cannot
/// give another time. Therefore, those that are out of order are switched off and on again, one
/// after the other, which can take a second for each. Favourites that are not in `files` and
/// moodsets that are no favourites do not change.
///
/// Returns the reason of a failure, in one line, or an empty text.
QString orderFavorites(const MoodsetService& service, const QStringList& files);
