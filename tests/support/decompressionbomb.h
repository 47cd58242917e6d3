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
