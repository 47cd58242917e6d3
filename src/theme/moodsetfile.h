// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetdata.h"

#include <QString>

/// Fills a record from the moodset file at the local path `filePath`, for a file that the database
/// does not know. The record must carry the file's URL already, against which its pictures and
/// tones are resolved.
///
/// False for a file that cannot be read, is no JSON object, or names no wallpaper; the record is
/// then left as it was, and nothing is logged. docs/bundle-format.md describes the format. What the
/// database is filled with is read by MoodsetManager::updateMetaData(), to rules of its own.
bool readMoodsetFile(Moodset& moodset, const QString& filePath);
