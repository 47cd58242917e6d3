// SPDX-License-Identifier: BSD-3-Clause
#include "argb.h"

std::optional<Argb> Argb::fromText(const QString& text)
{
    if (!text.startsWith(QLatin1Char('#')) || (text.size() != 7 && text.size() != 9)) {
        return std::nullopt;
    }
    const QByteArray digits = text.mid(1).toLatin1();
    // toUInt() also accepts signs and spaces.
    const QByteArray bytes = QByteArray::fromHex(digits);
    if (bytes.toHex() != digits.toLower()) {
        return std::nullopt;
    }
    const auto byteAt = [&bytes](int index) { return int(quint8(bytes.at(index))); };
    const int first = bytes.size() - 3;
    return Argb{first == 1 ? byteAt(0) : 255, byteAt(first), byteAt(first + 1), byteAt(first + 2)};
}

QString Argb::hex() const
{
    return QLatin1Char('#') + argb().mid(3);
}

QString Argb::rgb() const
{
    return QStringLiteral("%1, %2, %3").arg(red).arg(green).arg(blue);
}

QString Argb::argb() const
{
    const QLatin1Char zero('0');
    return QStringLiteral("#%1%2%3%4")
        .arg(alpha, 2, 16, zero)
        .arg(red, 2, 16, zero)
        .arg(green, 2, 16, zero)
        .arg(blue, 2, 16, zero);
}
