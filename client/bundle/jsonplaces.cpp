// SPDX-License-Identifier: BSD-3-Clause
#include "jsonplaces.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cstring>

JsonPlaces::JsonPlaces(const QByteArray& text)
    : m_text(text)
{
    const QByteArray byteOrderMark("\xef\xbb\xbf");
    m_offset = text.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    readValue(QString());
}

JsonPlaces::Place JsonPlaces::value(const QString& path) const
{
    return of(m_text, m_offsets.value(path, 0));
}

JsonPlaces::Place JsonPlaces::of(const QByteArray& text, int offset)
{
    const QByteArray before = text.left(offset);
    const int lineStart = before.lastIndexOf('\n') + 1;
    return {before.count('\n') + 1, int(QString::fromUtf8(before.mid(lineStart)).size()) + 1};
}

char JsonPlaces::at() const
{
    return m_offset < m_text.size() ? m_text.at(m_offset) : '\0';
}

void JsonPlaces::skipSpace()
{
    while (at() != '\0' && std::strchr(" \t\r\n", at())) {
        ++m_offset;
    }
}

/// The text of a string. Its quotation mark is the next character.
QString JsonPlaces::readString()
{
    const int start = m_offset++;
    while (at() != '"' && m_offset < m_text.size()) {
        m_offset += at() == '\\' ? 2 : 1;
    }
    ++m_offset;
    const QByteArray array = '[' + m_text.mid(start, m_offset - start) + ']';
    return QJsonDocument::fromJson(array).array().at(0).toString();
}

void JsonPlaces::readValue(const QString& path)
{
    skipSpace();
    m_offsets.insert(path, m_offset);
    if (at() == '{') {
        readObject(path);
    } else if (at() == '[') {
        readArray(path);
    } else if (at() == '"') {
        readString();
    } else {
        while (at() != '\0' && !std::strchr(",]} \t\r\n", at())) {
            ++m_offset;
        }
    }
    skipSpace();
}

void JsonPlaces::readObject(const QString& path)
{
    do {
        ++m_offset;
        skipSpace();
        if (at() != '"') {
            break;
        }
        const QString key = readString();
        skipSpace();
        ++m_offset;
        readValue(path + QLatin1Char('/') + key);
    } while (at() == ',');
    ++m_offset;
}

void JsonPlaces::readArray(const QString& path)
{
    int index = 0;
    do {
        ++m_offset;
        skipSpace();
        if (at() == ']' || at() == '\0') {
            break;
        }
        readValue(path + QLatin1Char('/') + QString::number(index++));
    } while (at() == ',');
    ++m_offset;
}
