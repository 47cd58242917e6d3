// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QString>

/// A small file of a package: a moodset file, an index or a translation catalogue.
struct PackagedFile
{
    enum State {
        /// The path does not lead to a regular file, or the file cannot be read.
        NotReadable,
        /// The file is larger than MaximumSize.
        TooLarge,
        Read
    };

    static constexpr qint64 MaximumSize = qint64(16) * 1024 * 1024; // bytes

    /// Reads the file at the local path `path` without blocking. A file that is too large causes a
    /// warning.
    static PackagedFile read(const QString& path);

    /// The file as JSON, and `error`, as QJsonDocument::fromJson() gives them. But if a text begins
    /// with a byte order mark, it keeps the mark here.
    QJsonDocument json(QJsonParseError* error = nullptr) const;

    State state = NotReadable;
    /// Empty if the file was not read. Then it cannot be parsed either.
    QByteArray content;
};
