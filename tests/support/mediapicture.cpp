// SPDX-License-Identifier: BSD-3-Clause
#include "mediapicture.h"

#include "byteorder.h"

namespace {

constexpr quint8 ShortItemVersion = 0;
constexpr quint8 LongItemVersion = 1;

QByteArray item(int index, PropertyNumbers numbers)
{
    const quint32 id = quint32(index) + 1;
    return numbers == PropertyNumbers::Long ? bigEndian(id) : bigEndian(quint16(id));
}

/// The number of a property, with the bit of one that decoders have to know.
QByteArray property(int number, PropertyNumbers numbers)
{
    return numbers == PropertyNumbers::Long ? bigEndian(quint16(0x8000 | number))
                                            : bigEndian(quint8(0x80 | number));
}

} // namespace

QByteArray box(const QByteArray& type, const QByteArray& content)
{
    return bigEndian(quint32(content.size() + 8)) + type + content;
}

QByteArray fullBox(const QByteArray& type, quint8 version, const QByteArray& content, quint32 flags)
{
    return box(type, bigEndian(quint32(version) << 24 | flags) + content);
}

QByteArray mediaPicture(
    const QByteArray& brand, const QVector<QSize>& sizes, int main, PropertyNumbers numbers)
{
    const quint8 version = numbers == PropertyNumbers::Long ? LongItemVersion : ShortItemVersion;
    // Each picture has a rotation of its own, which does not count, and then its size.
    QByteArray properties;
    QByteArray associations = bigEndian(quint32(sizes.size()));
    for (int i = 0; i < sizes.size(); ++i) {
        properties += box("irot", QByteArray(1, '\1'));
        properties += fullBox(
            "ispe", 0,
            bigEndian(quint32(sizes.at(i).width())) + bigEndian(quint32(sizes.at(i).height())));
        associations +=
            item(i, numbers) + '\2' + property(2 * i + 1, numbers) + property(2 * i + 2, numbers);
    }
    const QByteArray description =
        fullBox("hdlr", 0, QByteArray("\0\0\0\0pict\0\0\0\0\0\0\0\0\0\0\0\0\0", 21))
        + fullBox("pitm", version, item(main, numbers))
        + box("iprp", box("ipco", properties) + fullBox("ipma", version, associations, version));
    return box("ftyp", brand + QByteArray(4, '\0') + "mif1" + brand)
        + fullBox("meta", 0, description);
}
