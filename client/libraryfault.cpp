// SPDX-License-Identifier: BSD-3-Clause
#include "libraryfault.h"

#include "text.h"

#include <QFileInfo>

#include <libraryreader.h>

namespace {

bool isMissing()
{
    return !QFileInfo::exists(LibraryReader::standardPath());
}

} // namespace

QString libraryFault(const LibraryReader& library)
{
    if (library.error().isEmpty()) {
        return {};
    }
    return isMissing() ? Text::tr("there is no database at %1").arg(LibraryReader::standardPath())
                       : Text::tr("cannot read the library: %1").arg(library.error());
}

QString libraryFaultWithAdvice(const LibraryReader& library)
{
    const QString fault = libraryFault(library);
    return fault.isEmpty() || !isMissing() ? fault
                                           : Text::tr("%1; to have the daemon make it: %2")
                                                 .arg(fault, QStringLiteral("moodsetctl wait"));
}
