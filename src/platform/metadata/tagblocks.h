// SPDX-License-Identifier: BSD-3-Clause
#pragma once

#include "filerange.h"

#include <QByteArray>

#include <utility>

class WindowedFile;

/// A block of bytes with tags: a part of a file, or the decoded content of such a part.
class TagBlock
{
public:
    TagBlock() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): most blocks are parts of a file.
    TagBlock(const FileRange& range)
        : m_range(range)
    {
    }
    explicit TagBlock(QByteArray decoded)
        : m_range({0, decoded.size()})
        , m_decoded(std::move(decoded))
    {
    }

    bool isEmpty() const { return m_range.isEmpty(); }
    qint64 length() const { return m_range.length; }

    /// The `length` bytes at `offset` of the block in `file`, or fewer if the block or the file
    /// ends earlier.
    QByteArray read(WindowedFile& file, qint64 offset, qint64 length) const;

    /// The part of this block from `offset` on. Empty if the block ends before `offset`.
    TagBlock from(qint64 offset) const;
    /// The first `length` bytes of this block, or fewer if it ends earlier.
    TagBlock first(qint64 length) const;

private:
    FileRange m_range;
    QByteArray m_decoded;
};

/// The blocks of a picture file that hold its tags.
struct TagBlocks
{
    /// The Exif directories, from their TIFF header on.
    TagBlock exif;
    /// The XMP packet, as XML text.
    TagBlock xmp;

    /// Takes a block if there is none of its kind yet: if a file has several, the first one counts.
    /// @{
    void takeExif(const TagBlock& block) { takeFirst(&exif, block); }
    void takeXmp(const TagBlock& block) { takeFirst(&xmp, block); }
    /// @}

    bool isComplete() const { return !exif.isEmpty() && !xmp.isEmpty(); }

private:
    static void takeFirst(TagBlock* first, const TagBlock& block)
    {
        if (first->isEmpty()) {
            *first = block;
        }
    }
};

/// Takes the block that `segment` may contain. A segment is the content of a JPEG file's segment
/// for applications (APP1).
void takeApplicationSegment(WindowedFile& file, const TagBlock& segment, TagBlocks* blocks);

/// Finds the blocks of tags in a JPEG, PNG, WebP, TIFF, HEIF or AVIF file. The content decides the
/// kind of file, and the pixels are skipped. The XMP packet of a TIFF file is in one of its
/// directories and is not searched here.
TagBlocks findTagBlocks(WindowedFile& file);
