// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetdata.h"

#include <QString>

/// Fills a record from the moodset file at the local path `filePath`, for a file that the database
/// does not know. The record must have the file's URL already; the paths of its pictures and tones
/// are relative to it.
///
/// False if the file cannot be read, is not a JSON object, or names no wallpaper. The record does
/// not change then, and nothing is logged. docs/bundle-format.md describes the format. For the
/// database, MoodsetManager::updateMetaData() reads moodset files, by slightly different rules.
bool readMoodsetFile(Moodset& moodset, const QString& filePath);
