// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QtGlobal>

/// The position and the length of a block of bytes in a file. An empty block has the length 0.
struct FileRange
{
    qint64 offset = 0;
    qint64 length = 0;

    bool isEmpty() const { return length <= 0; }
    qint64 end() const { return offset + length; }
};
