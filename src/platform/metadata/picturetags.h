// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "quillmetadata.h"

class QString;
class WindowedFile;

/// The tags of the picture at the local path `path`, which is open as `file`. Our own library reads
/// them from the open file; a phone's own library opens the path again.
QuillMetadata pictureTags(WindowedFile& file, const QString& path);
