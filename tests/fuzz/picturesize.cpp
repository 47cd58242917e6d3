// SPDX-License-Identifier: BSD-3-Clause
// Compares the size of a picture from its header with that of the decoder.
#include "picturesize.h"
#include "fuzztarget.h"
#include "picturereader.h"
#include "windowedfile.h"

#include <QTemporaryDir>

void runTarget(const QByteArray& input)
{
    static const QTemporaryDir folder;
    static const QString path = folder.filePath(QStringLiteral("picture"));
    // Decoders may log anything.
    allowNoWarningsBut({""});
    writeFile(path, input);

    WindowedFile file(path);
    const QSize size = pictureSize(file);
    const QSize decoders = PictureReader(path).size();

    const bool isListed = pictureFormat(input.left(PictureSignatureSize)) != PictureFormat::Unknown;
    require(isListed || !size.isValid(), "a picture of another format has no size");
    require(!size.isValid() || !size.isEmpty(), "a size is positive or invalid");
    require(!decoders.isValid() || size == decoders, "a size is the decoder's");
}
