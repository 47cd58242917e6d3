// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "theme.h"

#include <QJsonObject>
#include <QJsonValue>

#include <libraryfile.h>
#include <libraryreader.h>
#include <moodsetdata.h>

/// Records for programs to read, as data/schema/moodsetctl.schema.json describes them. What is not
/// known is null.
namespace JsonRecord {

/// "#aarrggbb", or an empty text for an invalid colour.
QString colorText(const QColor& color);
/// The same text; null for an invalid colour.
QJsonValue color(const QColor& color);
/// A text; null if it is empty.
QJsonValue text(const QString& text);

QJsonObject colors(
    const QColor& primary, const QColor& secondary, const QColor& highlight,
    const QColor& secondaryHighlight);
QJsonObject colors(const MoodsetData& moodset);
QJsonObject picture(const LibraryFile& file);
/// The data of a moodset that a listing shows.
QJsonObject moodset(const MoodsetData& moodset, const QString& activeFile);
/// The same data and the tones, for a single moodset.
QJsonObject wholeMoodset(const MoodsetData& moodset, const QString& activeFile);
QJsonObject theme(const Theme& theme);
QJsonObject counts(const LibraryReader::Counts& counts);

} // namespace JsonRecord
