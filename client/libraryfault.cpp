// SPDX-License-Identifier: BSD-3-Clause
#include "libraryfault.h"

#include "text.h"

#include <QFileInfo>

#include <libraryreader.h>

QString libraryFault(const LibraryReader& library)
{
    if (library.error().isEmpty()) {
        return {};
    }
    const QString path = LibraryReader::standardPath();
    return QFileInfo::exists(path) ? Text::tr("cannot read the library: %1").arg(library.error())
                                   : Text::tr("there is no database at %1").arg(path);
}
