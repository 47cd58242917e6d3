// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSize>

class WindowedFile;

/// The size in pixels of the picture in `file`, as it is stored. It is the same as that of
/// PictureReader::size(), but HEIF and AVIF pictures have a size even if there is no decoder for
/// them. Invalid if it is unknown.
///
/// The header gives the size of usual pictures. A decoder is asked only if the header is unusual.
QSize pictureSize(WindowedFile& file);
