// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "pictureformat.h"

#include <QImage>
#include <QImageReader>
#include <QSize>

#include <memory>

class BoundedFile;
class QByteArray;
class QIODevice;
class QRect;
class QString;
class RegularFile;
enum class PngChunks;

/// Reads a picture that may be hostile. All pictures must be decoded and measured with this class.
///
/// The content decides the format, not the name, and only decoders of the formats of
/// pictureformat.h are used. A file of another format, a file that is not a regular file, and a
/// picture for which there is not enough memory cannot be read. Reading does not block and logs
/// nothing; decoders may log the faults of a picture.
class PictureReader
{
public:
    /// The maximum number of bytes that are read for the size. Some decoders search the whole file
    /// for it.
    static constexpr qint64 HeaderLimit = qint64(32) * 1024 * 1024;
    /// The maximum number of bytes that are read for the pixels. No picture that fits into memory
    /// needs more. A decoder reads this many in two or three seconds.
    static constexpr qint64 PictureLimit = qint64(512) * 1024 * 1024;

    /// A reader of the file at the local path `path`.
    explicit PictureReader(const QString& path);
    /// A reader of a file that is open already.
    explicit PictureReader(std::shared_ptr<const RegularFile> file);
    /// A reader of a file's content.
    explicit PictureReader(const QByteArray& content);
    ~PictureReader();
    Q_DISABLE_COPY_MOVE(PictureReader)

    /// The format that the content has.
    PictureFormat format() const { return m_format; }

    /// The size of the picture as it is stored, in pixels. Both sides are positive, or the size is
    /// invalid if it is unknown.
    QSize size() const;

    /// Makes read() turn the picture upright, as its tags say.
    void setAutoTransform(bool isOn) { m_reader.setAutoTransform(isOn); }

    /// The whole picture; null if it cannot be read.
    QImage read();
    /// The part `clip` of it, scaled to `scaledSize` as it is decoded; null if it cannot be read.
    QImage read(const QRect& clip, const QSize& scaledSize);

private:
    explicit PictureReader(std::unique_ptr<BoundedFile> file);
    void openPicture();
    bool claimsTooMuch(PngChunks chunks, qint64 limit) const;

    BoundedFile* m_file = nullptr; // m_device, unless that is a buffer
    std::unique_ptr<QIODevice> m_device;
    PictureFormat m_format = PictureFormat::Unknown;
    QImageReader m_reader;
};
