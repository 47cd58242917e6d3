// SPDX-License-Identifier: BSD-3-Clause
#include "catalogbuilder.h"

#include "byteorder.h"

QByteArray CatalogBuilder::magic()
{
    return QByteArray::fromHex("3cb86418caef9c95cd211cbf60a1bddd");
}

QByteArray CatalogBuilder::part(uchar tag, const QByteArray& content)
{
    return char(tag) + bigEndian(content.size()) + content;
}

QByteArray CatalogBuilder::utf16(const QString& text)
{
    QByteArray bytes;
    for (const QChar unit : text) {
        bytes += bigEndian(unit.unicode());
    }
    return bytes;
}

QByteArray CatalogBuilder::message(const QString& translation, const QByteArray& parts)
{
    return part(Translation, utf16(translation)) + part(SourceText, "a") + parts
        + char(EndOfMessage);
}

QByteArray CatalogBuilder::catalog(const QByteArrayList& messages, const QByteArray& parts)
{
    QByteArray hashes;
    QByteArray bytes;
    for (const QByteArray& message : messages) {
        hashes += bigEndian(HashOfA) + bigEndian(bytes.size());
        bytes += message;
    }
    return magic() + part(Hashes, hashes) + part(Messages, bytes) + parts;
}
