// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QStringList>

class MoodsetService;

/// Has the daemon list favourites in an order.
///
/// The daemon lists them by when they became favourites, to the second, and takes no other time
/// than that of the call. Those that are out of order are switched off and on again one after the
/// other, which can take a second each. Favourites that are not in `files` are left alone, and so
/// are moodsets that are no favourites.
///
/// Returns why it cannot, in one line, or an empty text.
QString orderFavorites(const MoodsetService& service, const QStringList& files);
