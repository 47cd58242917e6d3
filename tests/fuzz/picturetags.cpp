// SPDX-License-Identifier: BSD-3-Clause
// The tags of a picture file of any kind.
#include "fuzztarget.h"
#include "quillmetadata.h"

#include <QTemporaryDir>

namespace {

void requireSane(const QuillMetadata& metadata)
{
    const QVariant orientation = metadata.entry(QuillMetadata::OrientationTag);
    require(
        !orientation.isValid() || (orientation.toInt() >= 1 && orientation.toInt() <= 8),
        "an orientation is one of eight");
    const QVariant timestamp = metadata.entry(QuillMetadata::TimestampTag);
    require(!timestamp.isValid() || timestamp.toDateTime().isValid(), "a time is a valid one");
}

} // namespace

void runTarget(const QByteArray& input)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("picture"));
    allowNoWarningsBut({});
    writeFile(path, input);

    const QuillMetadata all(path);
    const QuillMetadata exif(path, QuillMetadata::ExifFormat);
    const QuillMetadata xmp(path, QuillMetadata::XmpFormat);

    for (const QuillMetadata* metadata : {&all, &exif, &xmp}) {
        requireSane(*metadata);
    }
    for (const int tag : {QuillMetadata::TimestampTag, QuillMetadata::OrientationTag}) {
        const QVariant believed = exif.entry(tag).isValid() ? exif.entry(tag) : xmp.entry(tag);
        require(all.entry(tag) == believed, "Exif is believed before XMP");
    }
}
