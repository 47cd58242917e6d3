// SPDX-License-Identifier: BSD-3-Clause
#include "quillmetadata.h"

#include "exifdate.h"
#include "exifdirectory.h"
#include "tagblocks.h"
#include "windowedfile.h"
#include "xmppacket.h"

#include <QByteArray>

namespace {

constexpr int Orientations = 8;

int validOrientation(quint32 number)
{
    return number >= 1 && number <= Orientations ? int(number) : 0;
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

QByteArray readPacket(WindowedFile& file, const TagBlock& block)
{
    // The size of the largest segment of a JPEG file. The time of the parser grows with the square
    // of the size, and is 0.2 s for this size.
    constexpr qint64 maximumPacket = 0xffff;
    return block.length() <= maximumPacket ? block.read(file, 0, block.length()) : QByteArray();
}

} // namespace

QuillMetadata::QuillMetadata(const QString& path, int formats)
{
    WindowedFile file(path);
    read(file, formats);
}

QuillMetadata::QuillMetadata(WindowedFile& file, int formats)
{
    read(file, formats);
}

void QuillMetadata::read(WindowedFile& file, int formats)
{
    const TagBlocks blocks = findTagBlocks(file);
    const ExifTags exif = readExifTags(file, blocks.exif);
    if ((formats & ExifFormat) != 0) {
        m_timestamp = timestampOf(exif);
        m_orientation = validOrientation(exif.orientation);
    }
    const bool isComplete = m_timestamp.isValid() && m_orientation > 0;
    if ((formats & XmpFormat) != 0 && !isComplete) {
        const TagBlock packet = blocks.xmp.isEmpty() ? exif.xmp : blocks.xmp;
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
