// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>

/// Whether `name` can be the name of a file in a bundle. The names of wallpapers, of tones and of
/// the files in an index must be bare ones: names without a directory.
///
/// A name is not bare if it is empty, contains a "/", or cannot be the name of a file. A NUL or
/// half of a surrogate pair would be lost on the way to the disk, and what remains could be the
/// name of another file. "." and ".." are bare names.
bool isBareName(const QString& name);
