// SPDX-License-Identifier: BSD-3-Clause
#include "wholefile.h"

#include "text.h"

#include <QFileInfo>
#include <QSaveFile>

QString writeWholeFile(const QString& path, const QByteArray& content)
{
    const QFileInfo place(path);
    // A device would be replaced, too.
    if (place.exists() && !place.isFile()) {
        return Text::tr("not a file");
    }
    QSaveFile file(path);
    // commit() alone takes a file whose last bytes find no space for complete.
    const bool isWritten = file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner)
        && file.write(content) == content.size() && file.flush() && file.commit();
    return isWritten ? QString() : file.errorString();
}
