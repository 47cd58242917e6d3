// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QtEndian>

/// The bytes of a number, with the most significant one first.
template <typename Number>
QByteArray bigEndian(Number number)
{
    QByteArray bytes(int(sizeof(Number)), '\0');
    qToBigEndian(number, bytes.data());
    return bytes;
}

/// The bytes of a number, with the least significant one first.
template <typename Number>
QByteArray littleEndian(Number number)
{
    QByteArray bytes(int(sizeof(Number)), '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}
