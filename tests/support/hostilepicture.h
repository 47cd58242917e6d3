// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

/// An MNG animation of one frame, in 90 bytes, that Qt's plugin for this format plays forever.
QByteArray endlessAnimation();

/// A vector picture of 2.6 KB in which each of 40 groups shows the one before it twice. The file
/// gives no size, so Qt's plugin for this format visits all groups to compute it.
QByteArray nestedVectorPicture();

/// Adds the rows of a test: "bytes" in formats that Qt's plugins can read but the daemon must not.
void addUnlistedFormats();

/// Adds the rows of a test: "bytes" that are the start of a file, for each format that is read. The
/// decoder of the format expects more bytes after them.
void addStartsOfPictures();
