// SPDX-License-Identifier: BSD-3-Clause
#include "quillmetadata.h"

QuillMetadata::QuillMetadata(const QString& path, int formats)
{
    Q_UNUSED(path)
    Q_UNUSED(formats)
}

QVariant QuillMetadata::entry(int tag) const
{
    switch (tag) {
    case TimestampTag:
        return m_timestamp.isValid() ? QVariant(m_timestamp) : QVariant();
    case OrientationTag:
        return m_orientation > 0 ? QVariant(m_orientation) : QVariant();
    }
    return QVariant();
}
