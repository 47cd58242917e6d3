// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QSize>

/// Small files that claim to be pictures of `size` pixels, but contain only the first few of them.
/// @{
QByteArray pngBomb(const QSize& size);
QByteArray jpegBomb(const QSize& size, bool isProgressive = false);
QByteArray bmpBomb(const QSize& size);
QByteArray gifBomb(const QSize& size);
/// @}

/// A zlib stream of `length` zeros. The zeros are never all in memory.
QByteArray compressedZeros(qint64 length);

/// A small PNG file that contains all of its `size` pixels. They are black and have one bit each.
QByteArray completePngBomb(const QSize& size);

/// Adds the rows of a test for pictures of 30000 x 30000 pixels, for which there is not enough
/// memory. It makes the columns "bytes", the content of the file, and "messages", those of its
/// decoder.
void addBombRows();
