// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

class QIODevice;

/// The chunks of a PNG picture that a decoder passes.
enum class PngChunks {
    BeforePixels, ///< as for the size
    All
};

/// Whether one of the chunks claims to go on behind the first `limit` bytes of the device, or
/// behind its end. No decoder can read such a picture, but it first takes memory for all that the
/// chunk claims. Pixels are another matter, because they are read bit by bit.
///
/// The device must be able to seek. It stays at its position.
bool hasOverlongChunk(QIODevice* device, PngChunks which, qint64 limit);
