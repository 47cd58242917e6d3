// SPDX-License-Identifier: BSD-3-Clause
#include "quillmetadata.h"

#include "exifdate.h"
#include "exifdirectory.h"
#include "regularfile.h"
#include "tagblocks.h"
#include "xmppacket.h"

#include <QByteArray>

namespace {

constexpr int kOrientations = 8;

int validOrientation(quint32 number)
{
    return number >= 1 && number <= kOrientations ? static_cast<int>(number) : 0;
}

QDateTime dateOf(const ExifDateTags& tags)
{
    return exifDate(tags.date, tags.subSeconds, tags.offset);
}

QDateTime timestampOf(const ExifTags& tags)
{
    for (const ExifDateTags& date : {tags.original, tags.digitized, tags.modified}) {
        QDateTime timestamp = dateOf(date);
        if (timestamp.isValid()) {
            return timestamp;
        }
    }
    return {};
}

QDateTime timestampOf(const XmpTags& tags)
{
    for (const QByteArray& date : {tags.original, tags.created, tags.digitized}) {
        QDateTime timestamp = exifDate(date);
        if (timestamp.isValid()) {
            return timestamp;
        }
    }
    return {};
}

QByteArray readPacket(RegularFile& file, const FileRange& range)
{
    // What a segment of a JPEG file can carry. The parser's time grows with the square of the size,
    // to 0.2 s at this one.
    constexpr qint64 kMaximumPacket = 0xffff;
    const bool fits = range.length <= kMaximumPacket;
    return fits ? file.read(range.offset, static_cast<int>(range.length)) : QByteArray();
}

} // namespace

QuillMetadata::QuillMetadata(const QString& path, int formats)
{
    RegularFile file(path);
    const TagBlocks blocks = findTagBlocks(file);
    const ExifTags exif = readExifTags(file, blocks.exif);
    if ((formats & ExifFormat) != 0) {
        m_timestamp = timestampOf(exif);
        m_orientation = validOrientation(exif.orientation);
    }
    const bool isComplete = m_timestamp.isValid() && m_orientation > 0;
    if ((formats & XmpFormat) != 0 && !isComplete) {
        const FileRange packet = blocks.xmp.isEmpty() ? exif.xmp : blocks.xmp;
        complete(readXmpTags(readPacket(file, packet)));
    }
}

void QuillMetadata::complete(const XmpTags& tags)
{
    if (!m_timestamp.isValid()) {
        m_timestamp = timestampOf(tags);
    }
    if (m_orientation == 0) {
        m_orientation = validOrientation(tags.orientation.trimmed().toUInt());
    }
}

QVariant QuillMetadata::entry(int tag) const
{
    switch (tag) {
    case TimestampTag:
        return m_timestamp.isValid() ? QVariant(m_timestamp) : QVariant();
    case OrientationTag:
        return m_orientation > 0 ? QVariant(m_orientation) : QVariant();
    }
    return {};
}
