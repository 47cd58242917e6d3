// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include <QByteArray>

#include <vector>

/// The content of a picture file.
struct SamplePicture
{
    QByteArray name;
    QByteArray bytes;
};

/// Pictures in all forms of the formats of pictureformat.h that Qt has decoders for: with and
/// without tags, palettes, transparency and several frames, and with each form of header.
std::vector<SamplePicture> samplePictures();
