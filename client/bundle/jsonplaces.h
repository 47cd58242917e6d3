// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

/// The positions of the values in a JSON text. QJsonDocument does not keep them.
class JsonPlaces
{
public:
    /// A line and a column, both from 1, in characters.
    struct Place
    {
        int line = 1;
        int column = 1;
    };

    /// The text must be JSON that QJsonDocument has read without an error.
    explicit JsonPlaces(const QByteArray& text);

    /// The position of the value at a path such as "/ringerToneFile/enabled" or
    /// "/files/0/fileName". The beginning of the text if there is no such value.
    Place value(const QString& path) const;

    /// The place of a byte.
    static Place of(const QByteArray& text, int offset);

private:
    void readValue(const QString& path);
    void readObject(const QString& path);
    void readArray(const QString& path);
    QString readString();
    void skipSpace();
    char at() const;

    QByteArray m_text;
    int m_offset = 0;
    QHash<QString, int> m_offsets;
};
