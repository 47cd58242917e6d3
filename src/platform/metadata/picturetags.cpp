// SPDX-License-Identifier: BSD-3-Clause
#include "picturetags.h"

QuillMetadata pictureTags(WindowedFile& file, const QString& /*path*/)
{
    return QuillMetadata(file);
}
