// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QSize>

/// Files of a few bytes that claim to be pictures of `size` pixels. Their pixels end soon.
/// @{
QByteArray pngBomb(const QSize& size);
QByteArray jpegBomb(const QSize& size, bool isProgressive = false);
QByteArray bmpBomb(const QSize& size);
QByteArray gifBomb(const QSize& size);
/// @}

/// A small PNG file with all of its `size` pixels, which are black and take one bit each.
QByteArray completePngBomb(const QSize& size);

/// Adds the rows of a test for pictures of 30000 x 30000 pixels for which there is no memory, to
/// columns that it makes: the file's "bytes", and the "messages" of its decoder.
void addBombRows();
