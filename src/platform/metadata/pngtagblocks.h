// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tagblocks.h"

/// Finds the blocks of tags in a PNG file: the chunk for Exif, and the text with an XMP packet. If
/// one of them is missing, older texts count, too: before the chunk existed, programs wrote the
/// block of a JPEG file as hexadecimal digits, usually compressed.
TagBlocks findInPng(WindowedFile& file);
