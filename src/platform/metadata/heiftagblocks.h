// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "tagblocks.h"

/// Finds the blocks of tags in a HEIF or AVIF file, which consists of boxes inside boxes. The
/// blocks are items of the box "meta", which gives each item a number, a type and a position.
TagBlocks findInHeif(WindowedFile& file);
