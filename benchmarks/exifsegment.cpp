// SPDX-License-Identifier: BSD-3-Clause
#include "exifsegment.h"

#include <QtEndian>

namespace {

template <typename Number>
QByteArray littleEndian(Number number)
{
    QByteArray bytes(int(sizeof number), Qt::Uninitialized);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

template <typename Number>
QByteArray bigEndian(Number number)
{
    QByteArray bytes(int(sizeof number), Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// A directory of tags. Values that do not fit into its entries follow it.
class TagDirectory
{
public:
    /// A directory of `entryCount` tags at `offset` of the block.
    TagDirectory(quint32 offset, int entryCount)
        : m_valuesOffset(offset + 2 + 12 * quint32(entryCount) + 4)
        , m_entries(littleEndian(quint16(entryCount)))
    {
    }

    void addShort(quint16 tag, quint16 value)
    {
        addEntry(tag, 3, 1, littleEndian(value) + QByteArray(2, '\0'));
    }

    void addLong(quint16 tag, quint32 value) { addEntry(tag, 4, 1, littleEndian(value)); }

    void addText(quint16 tag, const QByteArray& text)
    {
        const QByteArray value = text + '\0';
        const auto length = quint32(value.size());
        if (length <= 4) {
            addEntry(tag, 2, length, value.leftJustified(4, '\0'));
        } else {
            addEntry(tag, 2, length, littleEndian(end()));
            m_values += value;
        }
    }

    /// The offset after this directory, when all tags are added.
    quint32 end() const { return m_valuesOffset + quint32(m_values.size()); }

    QByteArray bytes(quint32 nextDirectory) const
    {
        return m_entries + littleEndian(nextDirectory) + m_values;
    }

private:
    void addEntry(quint16 tag, quint16 type, quint32 count, const QByteArray& value)
    {
        m_entries += littleEndian(tag) + littleEndian(type) + littleEndian(count) + value;
    }

    quint32 m_valuesOffset;
    QByteArray m_entries;
    QByteArray m_values;
};

/// Cameras add notes of their own, which make the headers long.
constexpr int NoteLength = 512;

} // namespace

QByteArray exifSegment(const ExifTags& tags)
{
    const QByteArray date =
        tags.dateTaken.toString(QStringLiteral("yyyy:MM:dd HH:mm:ss")).toLatin1();
    // The length of the first directory does not depend on its offsets.
    const auto mainDirectory = [&](quint32 exifOffset) {
        TagDirectory directory(8, 6);
        directory.addText(0x010f, "Camera");
        directory.addText(0x0110, "Phone camera");
        directory.addShort(0x0112, quint16(tags.orientation));
        directory.addText(0x0131, "Camera 1.0");
        directory.addText(0x0132, date);
        directory.addLong(0x8769, exifOffset);
        return directory;
    };
    const quint32 exifOffset = mainDirectory(0).end();

    TagDirectory exif(exifOffset, 5);
    exif.addText(0x9003, date);
    exif.addText(0x9004, date);
    exif.addText(0x9286, QByteArray(NoteLength, ' '));
    exif.addLong(0xa002, 4000);
    exif.addLong(0xa003, 3000);

    const quint32 thumbnailOffset = tags.thumbnail.isEmpty() ? 0 : exif.end();
    QByteArray block = QByteArray("II*\0", 4) + littleEndian(quint32(8))
        + mainDirectory(exifOffset).bytes(thumbnailOffset) + exif.bytes(0);
    if (thumbnailOffset != 0) {
        TagDirectory thumbnail(thumbnailOffset, 3);
        thumbnail.addShort(0x0103, 6);
        thumbnail.addLong(0x0201, thumbnail.end());
        thumbnail.addLong(0x0202, quint32(tags.thumbnail.size()));
        block += thumbnail.bytes(0) + tags.thumbnail;
    }

    const QByteArray content = QByteArray("Exif\0\0", 6) + block;
    return "\xff\xe1" + bigEndian(quint16(content.size() + 2)) + content;
}
