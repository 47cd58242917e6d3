// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QString>
#include <QVariant>

/// A reader that finds no tags.
class QuillMetadata
{
public:
    enum Tag : int { TimestampTag, OrientationTag };
    enum Format : int { ExifFormat, XmpFormat, AllFormats };

    explicit QuillMetadata(const QString& path, int formats = AllFormats);
    QVariant entry(int tag) const;
};
