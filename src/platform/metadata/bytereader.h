// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QtEndian>

#include <utility>

/// Reads numbers and pieces of some bytes, from the beginning to the end. Reading past the end
/// gives zeros and empty pieces, and isGood() is false from then on.
class ByteReader
{
public:
    enum class Order { BigEndian, LittleEndian };

    explicit ByteReader(QByteArray bytes, Order order = Order::BigEndian)
        : m_bytes(std::move(bytes))
        , m_order(order)
    {
    }

    /// Whether nothing was read past the end.
    bool isGood() const { return m_good; }
    int position() const { return m_position; }

    quint8 u8() { return number<quint8>(); }
    quint16 u16() { return number<quint16>(); }
    quint32 u32() { return number<quint32>(); }
    quint64 u64() { return number<quint64>(); }

    /// A number of 0, 4 or 8 bytes; a number of no bytes is 0. Another width makes the reader bad.
    quint64 unsignedOfWidth(int width)
    {
        switch (width) {
        case 0:
            return 0;
        case 4:
            return u32();
        case 8:
            return u64();
        }
        m_good = false;
        return 0;
    }

    QByteArray take(int count)
    {
        if (count < 0 || count > m_bytes.size() - m_position) {
            m_good = false;
        }
        if (!m_good) {
            return {};
        }
        QByteArray piece = m_bytes.mid(m_position, count);
        m_position += count;
        return piece;
    }

    /// The text up to the next NUL, which is passed over.
    QByteArray takeText()
    {
        const int end = m_good ? m_bytes.indexOf('\0', m_position) : -1;
        QByteArray text = take(end - m_position);
        take(1);
        return text;
    }

private:
    template <typename Number>
    Number number()
    {
        constexpr int size = int(sizeof(Number));
        if (size > m_bytes.size() - m_position) {
            m_good = false;
        }
        if (!m_good) {
            return 0;
        }
        const char* piece = m_bytes.constData() + m_position;
        m_position += size;
        return m_order == Order::BigEndian ? qFromBigEndian<Number>(piece)
                                           : qFromLittleEndian<Number>(piece);
    }

    const QByteArray m_bytes;
    const Order m_order;
    int m_position = 0;
    bool m_good = true;
};
