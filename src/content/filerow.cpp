// SPDX-License-Identifier: BSD-3-Clause
#include "filerow.h"

#include "filedata.h"

void FileRow::fill(FileData* file, const QSqlQuery& query)
{
    file->mimeType = query.value(MimeType).toString();
    file->fileName = query.value(FileName).toString();
    file->displayName = query.value(DisplayName).toString();
    file->permissions = query.value(Permissions).toInt();
}
