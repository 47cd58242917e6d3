// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QSize>

#include <optional>

class WindowedFile;

/// The sizes of pictures, read from the headers of their files; one function for each format. They
/// do not read the pixels, and allocate nothing whose size depends on the file's claims.
///
/// Decoders treat damaged headers in their own ways. So if anything in a header is unusual, the
/// function gives no size, and the decoder must be asked. Both sides of a size are positive.
/// @{
std::optional<QSize> jpegSize(WindowedFile& file);
std::optional<QSize> pngSize(WindowedFile& file);
std::optional<QSize> webpSize(WindowedFile& file);
std::optional<QSize> tiffSize(WindowedFile& file);
std::optional<QSize> gifSize(WindowedFile& file);
std::optional<QSize> bmpSize(WindowedFile& file);
std::optional<QSize> pnmSize(WindowedFile& file);
/// The size of the main picture of a HEIF or AVIF file, as it is stored, before it is turned.
std::optional<QSize> heifSize(WindowedFile& file);
/// @}
