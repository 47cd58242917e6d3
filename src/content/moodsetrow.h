// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "colorstring.h"
#include "moodsetdata.h"

#include <QSqlQuery>
#include <QUrl>
#include <QVariant>

/// Code that the statements about moodsets have in common.
namespace MoodsetRow {

/// Fills the fields of the look and the sound from the columns favorite, homeWallpaper,
/// applicationWallpaper, highlightColor, secondaryHighlightColor, primaryColor, secondaryColor,
/// ringerVolume, enabledSounds, partnerSpace and version. `column` is the number of the first one.
inline void fillLook(MoodsetData* moodset, const QSqlQuery& query, int column)
{
    const auto next = [&] { return query.value(column++); };
    const auto nextColor = [&] { return colorFromString(next().toString()); };
    moodset->favorite = next().toBool();
    moodset->homeWallpaper = next().toString();
    moodset->applicationWallpaper = next().toString();
    moodset->highlightColor = nextColor();
    moodset->secondaryHighlightColor = nextColor();
    moodset->primaryColor = nextColor();
    moodset->secondaryColor = nextColor();
    moodset->ringerVolume = next().toInt();
    moodset->enabledSounds = next().toInt();
    moodset->partnerSpace = next().toString();
    moodset->version = next().toInt();
}

/// The map of a resource, from the columns path, fileName and displayName of its file. `column` is
/// the number of the first one.
inline QVariantMap resource(const QSqlQuery& query, int column)
{
    return {
        {QStringLiteral("url"), QUrl::fromLocalFile(query.value(column).toString())},
        {QStringLiteral("fileName"), query.value(column + 1)},
        {QStringLiteral("displayName"), query.value(column + 2)}};
}

} // namespace MoodsetRow
