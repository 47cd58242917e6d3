// SPDX-License-Identifier: BSD-3-Clause
#include "filename.h"
#include "indexinglog.h"

#include <QFile>

std::optional<QString> decodeFileName(const QByteArray& bytes)
{
    // At the start of a text, Qt would remove a byte order mark.
    const QByteArray path = '/' + bytes;
    const QString text = QFile::decodeName(path);
    if (QFile::encodeName(text) != path) {
        return std::nullopt;
    }
    return text.mid(1);
}

void warnOfUnstorableName(const char* function, const QString& path)
{
    qCWarning(indexingLog) << function << "Left out a name that the database would change:" << path;
}

void warnOfUndecodableName(const char* function, const QByteArray& path)
{
    qCWarning(indexingLog) << function << "Left out a name that is not UTF-8:" << path;
}
