// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tagblocks.h"

/// Finds the tags' blocks in a HEIF or AVIF file, which is made of boxes within boxes. The blocks
/// are items of the box "meta", as which they have a number, a type and a place.
TagBlocks findInHeif(RegularFile& file);
