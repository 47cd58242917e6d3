// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "content/moodsetcontent.h"

#include <QString>

/// Makes a content database of a number of files, pictures or moodsets, 50 to a folder; each
/// moodset comes with a tone of each of the seven kinds as its resources.
void makeLibrary(const QString& path, MoodsetContent::Type type, int count);
