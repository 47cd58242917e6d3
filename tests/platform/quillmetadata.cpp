// SPDX-License-Identifier: BSD-3-Clause
#include "quillmetadata.h"

QuillMetadata::QuillMetadata(const QString& path, int formats){Q_UNUSED(path) Q_UNUSED(formats)}

QVariant QuillMetadata::entry(int tag) const
{
    Q_UNUSED(tag)
    return QVariant();
}
