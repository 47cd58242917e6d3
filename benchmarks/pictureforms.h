// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>
#include <QDateTime>

#include <vector>

/// The bytes of a picture file.
struct Picture
{
    /// The suffix of the file's name, with the dot.
    QByteArray suffix;
    QByteArray bytes;
};

/// Makes the pictures of a corpus. The pixels of a few pictures are encoded once, and each file
/// gets one of them with tags of its own: what indexing reads stands in front of them.
class PictureForms
{
public:
    PictureForms();

    /// The picture number `index`, always the same one. Of 20 pictures, 14 are JPEG files with Exif
    /// tags (two thirds of them with a thumbnail, so that their headers have the length that
    /// cameras give them), 3 are PNG, and 1 each is WebP, GIF and BMP.
    Picture picture(int index) const;
    /// When the picture number `index` was taken.
    static QDateTime dateTaken(int index);

private:
    QByteArray jpeg(int index) const;

    std::vector<QByteArray> m_jpegs;
    std::vector<QByteArray> m_pngs;
    QByteArray m_webp;
    QByteArray m_gif;
    QByteArray m_bmp;
    QByteArray m_thumbnail;
};
