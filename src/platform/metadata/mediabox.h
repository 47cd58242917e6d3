// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "filerange.h"

#include <QByteArray>

#include <optional>

class WindowedFile;

/// A box of an ISO media file, the form of HEIF and AVIF pictures.
struct MediaBox
{
    QByteArray type;
    FileRange content;
    qint64 end = 0;
};

/// The box at `offset`. Empty if it does not end at or before `limit`.
std::optional<MediaBox> mediaBoxAt(WindowedFile& file, qint64 offset, qint64 limit);

/// The content of the first box of the type in `range`, an empty range if there is none.
FileRange findMediaBox(WindowedFile& file, const FileRange& range, const char* type);
