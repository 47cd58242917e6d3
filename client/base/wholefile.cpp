// SPDX-License-Identifier: BSD-3-Clause
#include "wholefile.h"

#include "text.h"

#include <filereplacement.h>

#include <QFileInfo>

QString writeWholeFile(const QString& path, const QByteArray& content)
{
    const QFileInfo place(path);
    // A device would be replaced, too.
    if (place.exists() && !place.isFile()) {
        return Text::tr("not a file");
    }
    return replaceFile(path, content, QFileDevice::ReadOwner | QFileDevice::WriteOwner);
}
